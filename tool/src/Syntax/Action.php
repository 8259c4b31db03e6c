<?php

namespace TemplateTool\Syntax;

/** Something that an author may decide to do about a finding, where there is no single right answer. */
final class Action
{
    /** Prints the value through the escaping tag that fits the place. */
    public const ESCAPE = 'escape';

    /** Marks the value as one that needs no escaping. */
    public const VOUCH = 'vouch';

    /** @param list<Edit> $edits */
    public function __construct(
        public readonly string $kind,
        public readonly string $title,
        public readonly array $edits,
    ) {
    }
}
