<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

/** A rule that needs to see one tag only, wherever it stands. It is asked once for all tags that are written alike. */
interface TagRule extends Rule
{
    /** @return iterable<Problem> offsets count from the tag's opening brace */
    public function inTag(Tag $tag): iterable;
}
