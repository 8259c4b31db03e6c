<?php

namespace TemplateTool\Server;

/** A text that is open in the editor: it counts in place of the file's. */
final class OpenText
{
    private ?Lines $lines = null;

    /** $path: as Uri::path() has it. */
    public function __construct(
        public readonly string $uri,
        public readonly string $path,
        public int $version,
        private string $text,
        private string $encoding,
    ) {
    }

    public function text(): string
    {
        return $this->text;
    }

    public function lines(): Lines
    {
        return $this->lines ??= new Lines($this->text, $this->encoding);
    }

    /** A change as the client reports it: a range and its new text, or the whole text. */
    public function change(array $change): void
    {
        $new = (string) ($change['text'] ?? '');
        $this->text = isset($change['range']) ? $this->lines()->with($change['range'], $new) : $new;
        $this->lines = null;
    }
}
