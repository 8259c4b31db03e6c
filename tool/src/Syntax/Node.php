<?php

namespace TemplateTool\Syntax;

/** A tag at its place in a document. Parents are given by their number: deep nesting must not make deep structures. */
final class Node
{
    /** Where the closing tag of a block begins and ends; null when it opens none or is never closed. */
    public ?int $endOffset = null;
    public ?int $end = null;

    /** $parent, $loop: the numbers of the enclosing block and of the enclosing loop; -1 when there is none. */
    public function __construct(
        public readonly Tag $tag,
        public readonly int $offset,
        public readonly int $parent,
        public readonly int $loop,
        public readonly int $depth,
    ) {
    }
}
