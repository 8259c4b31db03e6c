<?php

namespace TemplateTool\Syntax;

/** A tag at its place in a document. Parents are given by their number: deep nesting must not make deep structures. */
final class Node
{
    /** Where the closing tag of a block begins and ends; null when it opens none or is never closed. */
    public ?int $endOffset = null;
    public ?int $end = null;

    /** @var array<string, int> by name: the number of the loop around it that its references mean, in this document */
    public array $loops = [];

    /**
     * $parent, $loop: the numbers of the enclosing block and of the enclosing loop; -1 when there is none.
     * $isLost: whether it stands behind a brace that has made it part of an earlier tag.
     */
    public function __construct(
        public readonly Tag $tag,
        public readonly int $offset,
        public readonly int $parent,
        public readonly int $loop,
        public readonly int $depth,
        public readonly bool $isLost = false,
    ) {
    }

    /** Whether the engine sees something else here, since a brace in a tag takes the rest of the text. */
    public function isCut(): bool
    {
        return $this->isLost || $this->tag->swallows;
    }
}
