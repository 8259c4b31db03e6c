<?php

namespace TemplateTool\Syntax;

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

    /** The same one, with an offset that counts from further in front. */
    public function movedBy(int $distance): self
    {
        return new self($this->name, $this->message, $this->offset + $distance, $this->length, $this->notes);
    }
}
