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

    public function jsonSerialize(): array
    {
        return ['offset' => $this->offset, 'length' => $this->length, 'text' => $this->text];
    }
}
