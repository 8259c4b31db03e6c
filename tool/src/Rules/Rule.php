<?php

namespace TemplateTool\Rules;

/**
 * Something that a template may do and that no author wants. A rule is a TagRule, a DocumentRule, a ViewRule or
 * a PageRule: it takes the least that it needs. The Catalogue lists them all.
 */
interface Rule
{
    /** @return non-empty-list<Warning> what it reports, mostly one thing */
    public static function warnings(): array;
}
