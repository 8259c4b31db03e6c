<?php

namespace TemplateTool\Syntax;

/** Something wrong at a place in a document. Errors, the engine's own messages, have no name. */
final class Problem
{
    /**
     * $edits: what mends it, where there is one right answer. $actions: what the author may decide to do about it.
     * $unless: nothing is to be said where the sample data has one of these.
     *
     * @param list<string> $notes
     * @param list<Edit> $edits
     * @param list<Action> $actions
     * @param list<Reference> $unless
     */
    public function __construct(
        public readonly ?string $name,
        public readonly string $message,
        public readonly int $offset,
        public readonly int $length,
        public readonly array $notes = [],
        public readonly array $edits = [],
        public readonly array $actions = [],
        public readonly array $unless = [],
    ) {
    }

    /** The same one, with an offset that counts from further in front. */
    public function movedBy(int $distance): self
    {
        $edits = array_map(static fn(Edit $edit): Edit => $edit->movedBy($distance), $this->edits);
        return new self(
            $this->name,
            $this->message,
            $this->offset + $distance,
            $this->length,
            $this->notes,
            $edits,
            $this->actions,
            $this->unless
        );
    }
}
