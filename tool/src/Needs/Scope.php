<?php

namespace TemplateTool\Needs;

use TemplateTool\Syntax\Reference;

/** The loops and sections around a tag. */
final class Scope
{
    /**
     * $loops: from the outside in, each with its name, the path of its elements (null when that is nowhere) and the
     * number of sections around it.
     *
     * @param list<array{string, ?list<string>, int}> $loops
     * @param list<Guard> $guards
     */
    public function __construct(private array $loops = [], public readonly array $guards = [])
    {
    }

    /** @param ?list<string> $list */
    public function inLoop(string $name, ?array $list): self
    {
        $element = $list === null ? null : [...$list, Need::ELEMENT];
        return new self([...$this->loops, [$name, $element, count($this->guards)]], $this->guards);
    }

    public function inSection(Guard $guard): self
    {
        return new self($this->loops, [...$this->guards, $guard]);
    }

    /** The path that a reference means; null when it finds nothing, or a key. @return ?list<string> */
    public function path(Reference $reference): ?array
    {
        if ($reference->isPath()) {
            return $reference->beginsWithInteger() ? null : $reference->indexes;
        }
        $element = $this->loop($reference)[1] ?? null;
        return $element === null || $reference->type === Reference::KEY ? null : [...$element, ...$reference->indexes];
    }

    /** The path of the list to whose keys a reference leads. @return ?list<string> */
    public function listOfKey(Reference $reference): ?array
    {
        $element = $reference->type === Reference::KEY ? $this->loop($reference)[1] ?? null : null;
        return $element === null ? null : array_slice($element, 0, -1);
    }

    /** The sections inside the loop to whose elements a path belongs; all when it belongs to none. @return list<Guard> */
    public function guardsOf(array $path): array
    {
        $first = 0;
        foreach ($this->loops as [, $element, $guards]) {
            if ($element !== null && array_slice($path, 0, count($element)) === $element) {
                $first = $guards;
            }
        }
        return array_slice($this->guards, $first);
    }

    /** @return ?array{string, ?list<string>, int} names are looked for from the outside in */
    private function loop(Reference $reference): ?array
    {
        if ($reference->namespace === '') {
            return $this->loops ? end($this->loops) : null;
        }
        foreach ($this->loops as $loop) {
            if ($loop[0] === $reference->namespace) {
                return $loop;
            }
        }
        return null;
    }
}
