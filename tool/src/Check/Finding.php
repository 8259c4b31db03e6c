<?php

namespace TemplateTool\Check;

use TemplateTool\Syntax\Action;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Source;

/** A problem that a check reports: what is wrong, and where. */
final class Finding implements \JsonSerializable
{
    public const ERROR = 'error';
    public const WARNING = 'warning';

    /** The name of the finding that a file can't be read. */
    public const UNREADABLE = 'unreadable-file';

    /** Lines and columns count from 1, columns in characters; the end is the place behind the last character. */
    public readonly int $line;
    public readonly int $column;
    public readonly int $endLine;
    public readonly int $endColumn;

    /**
     * $name: of a warning, for Catalogue; null for what the engine says.
     * $includedFrom: the include tags that lead to this file, innermost first.
     * $edits: what mends it, where there is one right answer. $actions: what the author may decide to do about it.
     *
     * @param list<string> $notes
     * @param list<array{file: string, line: int, column: int}> $includedFrom
     * @param list<Edit> $edits
     * @param list<Action> $actions
     */
    public function __construct(
        public readonly Source $source,
        public readonly string $severity,
        public readonly ?string $name,
        public readonly string $message,
        public readonly int $offset,
        public readonly int $length,
        public readonly array $notes = [],
        public readonly array $includedFrom = [],
        public readonly array $edits = [],
        public readonly array $actions = [],
    ) {
        [$this->line, $this->column] = $source->position($offset);
        [$this->endLine, $this->endColumn] = $source->position($offset + $length);
    }

    /** Of a file that can't be read. */
    public static function unreadable(string $path, string $reason): self
    {
        $source = new Source($path, '', realpath($path) ?: '');
        return new self($source, self::ERROR, self::UNREADABLE, "this can't be checked: $reason", 0, 0);
    }

    /** The same one, with one more note. */
    public function withNote(string $note): self
    {
        return new self(
            $this->source,
            $this->severity,
            $this->name,
            $this->message,
            $this->offset,
            $this->length,
            [...$this->notes, $note],
            $this->includedFrom,
            $this->edits,
            $this->actions
        );
    }

    public function isError(): bool
    {
        return $this->severity === self::ERROR;
    }

    public function isUnreadable(): bool
    {
        return $this->name === self::UNREADABLE;
    }

    /** The offset counts bytes, the length characters; both count bytes in the edits. */
    public function jsonSerialize(): array
    {
        return [
            'file' => $this->source->name,
            'line' => $this->line,
            'column' => $this->column,
            'endLine' => $this->endLine,
            'endColumn' => $this->endColumn,
            'offset' => $this->offset,
            'length' => Source::length(substr($this->source->text, $this->offset, $this->length)),
            'severity' => $this->severity,
            'name' => $this->name,
            'message' => $this->message,
            'notes' => $this->notes,
            'includedFrom' => $this->includedFrom,
            'edits' => $this->edits,
        ];
    }
}
