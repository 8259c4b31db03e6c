<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Reference;

/** A place in a template and one way that leads to it: the loops around it, there and around the include tags. */
final class Scope
{
    public const ELEMENT = '*';
    public const KEY = '[*]';

    /**
     * $loop: the number of the innermost loop around the place; -1 when there is none in this template.
     * $outer: the place of the include tag that leads here; null in a page.
     */
    public function __construct(
        public readonly Document $document,
        public readonly int $loop,
        public readonly ?self $outer = null,
    ) {
    }

    /** The path of the template that the way begins with. */
    public function page(): string
    {
        return $this->outer ? $this->outer->page() : $this->document->source->path;
    }

    /** The loop that a name stands for: the outermost one that bears it; the innermost of all when it is empty. */
    public function find(string $name): ?Loop
    {
        $found = null;
        foreach ($this->loops() as $loop) {
            if ($name === '') {
                return $loop;
            }
            $found = $loop->node->tag->name === $name ? $loop : $found;
        }
        return $found;
    }

    /** All loops around the place, innermost first. @return \Generator<int, Loop> */
    public function loops(): \Generator
    {
        for ($scope = $this; $scope; $scope = $scope->outer) {
            for ($i = $scope->loop; $i >= 0; $i = $node->loop) {
                $node = $scope->document->nodes[$i];
                yield new Loop($node, new self($scope->document, $node->loop, $scope->outer));
            }
        }
    }

    /**
     * Where in the data a reference leads, from the top: keys, and "*" or "[*]" for the elements or keys of a list.
     *
     * @return ?list<string> null when there is no such loop
     */
    public function path(Reference $reference): ?array
    {
        if ($reference->isPath()) {
            return $reference->indexes;
        }
        $list = $this->find($reference->namespace)?->path();
        $star = $reference->type === Reference::KEY ? self::KEY : self::ELEMENT;
        return $list === null ? null : [...$list, $star, ...$reference->indexes];
    }
}
