<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Node;

/** A loop, and the place at which it stands. */
final class Loop
{
    public function __construct(public readonly Node $node, public readonly Scope $scope)
    {
    }

    /** @return ?list<string> the path of the list that it walks; see Scope::path() */
    public function path(): ?array
    {
        $reference = $this->node->tag->references[0] ?? null;
        return $reference ? $this->scope->path($reference) : null;
    }

    /** The same loop, reached on whatever way, has the same key. */
    public function key(): string
    {
        return $this->scope->document->source->path . "\0" . $this->node->offset;
    }
}
