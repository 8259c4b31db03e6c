<?php

namespace TemplateTool\Needs;

/** That at least one of several values has to be there, when all conditions hold. */
final class Rule
{
    /**
     * @param non-empty-list<list<string>> $alternatives paths
     * @param list<Guard> $guards
     */
    public function __construct(public readonly array $alternatives, public readonly array $guards)
    {
    }
}
