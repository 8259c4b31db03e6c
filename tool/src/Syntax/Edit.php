<?php

namespace TemplateTool\Syntax;

/** What to write in place of a part of a text; offset and length count bytes. */
final class Edit implements \JsonSerializable
{
    public function __construct(
        public readonly int $offset,
        public readonly int $length,
        public readonly string $text,
    ) {
    }

    /** The same one, with an offset that counts from further in front. */
    public function movedBy(int $distance): self
    {
        return new self($this->offset + $distance, $this->length, $this->text);
    }

    public function jsonSerialize(): array
    {
        return ['offset' => $this->offset, 'length' => $this->length, 'text' => $this->text];
    }
}
