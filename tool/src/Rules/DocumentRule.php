<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

/** A rule that needs to see a whole text, however it is reached. It is asked once for each file. */
interface DocumentRule extends Rule
{
    /** @return iterable<Problem> */
    public function inDocument(Document $document): iterable;
}
