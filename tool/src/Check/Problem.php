<?php

namespace TemplateTool\Check;

/** Something wrong at a place in a document. Errors, the engine's own messages, have no name. */
final class Problem
{
    /** @param list<string> $notes */
    public function __construct(
        public readonly ?string $name,
        public readonly string $message,
        public readonly int $offset,
        public readonly int $length,
        public readonly array $notes = [],
    ) {
    }
}
