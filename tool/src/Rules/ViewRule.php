<?php

namespace TemplateTool\Rules;

use TemplateTool\Syntax\Problem;

/** A rule that needs to know the loops around a file, other files or the sample data. */
interface ViewRule extends Rule
{
    /** @return iterable<Problem> */
    public function inView(View $view): iterable;
}
