<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Problem;

/** A rule that follows a page through its includes. It is asked once for each template that nothing includes. */
interface PageRule extends Rule
{
    /** @return iterable<array{View, Problem}> each with the document it is in, as it is reached there */
    public function inPage(View $page): iterable;
}
