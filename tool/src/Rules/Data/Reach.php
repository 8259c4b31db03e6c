<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Tag;

/** What sample data makes of a place in a template: whether it is reached, and at which elements the loops around it are. */
final class Reach
{
    /** What lies inside more loops than these isn't looked at. */
    private const DEEPEST = 100;

    /**
     * $loops, outermost first: the name, the elements, the number of the loop that they lie in (-1: they lie at the top
     * of the data), where they lie there, and the blocks further inside that ask for them.
     *
     * $known: what has been found out about the data, the sets of loops and whether sections show, by their tags.
     *
     * @param list<array{name: string, set: ElementSet, base: int, indexes: list<string>, asked: list<Tag>}> $loops
     */
    private function __construct(
        private Engine $engine,
        private array $data,
        private \ArrayObject $known,
        private array $loops = [],
        private bool $isShown = true,
    ) {
    }

    public static function top(array $data, Engine $engine): self
    {
        return new self($engine, $data, new \ArrayObject());
    }

    /** The place inside a block. */
    public function inside(Tag $block): self
    {
        if (!$this->isReached() || $block->complaint !== null || !$block->references) {
            return $this->with($this->loops, false);
        }
        return $block->kind->isLoop() ? $this->inLoop($block) : $this->inSection($block);
    }

    public function isReached(): bool
    {
        return $this->isShown;
    }

    /**
     * What a reference finds here: at how many elements nothing, and the values. Keys are strings.
     *
     * @return array{int, list<mixed>}
     */
    public function values(Reference $reference): array
    {
        if ($reference->isPath()) {
            $found = $reference->beginsWithInteger() ? [] : ElementSet::find($this->data, $reference->indexes);
            return [1 - count($found), $found];
        }
        $number = $this->loop($reference->namespace);
        if ($number === null) {
            return [1, []];
        }
        $set = $this->loops[$number]['set'];
        return $reference->type === Reference::KEY ? [0, $set->keys] : $set->values($reference->indexes);
    }

    /** The names of the loops around the place, innermost first. @return list<string> */
    public function names(): array
    {
        return array_values(array_filter(array_reverse(array_column($this->loops, 'name')), strlen(...)));
    }

    private function inLoop(Tag $tag): self
    {
        $reference = $tag->references[0];
        $base = $reference->isPath() ? -1 : $this->loop($reference->namespace);
        if ($base === null || count($this->loops) >= self::DEEPEST) {
            return $this->with($this->loops, false);
        }
        // Elements in which there is nothing to walk don't lead here.
        $loops = $base < 0 ? $this->loops : $this->narrowed($base, $tag);
        $set = $base < 0
            ? $this->known[$reference->text] ??= ElementSet::walked($this->values($reference)[1])
            : $loops[$base]['set']->inside($reference->indexes);
        $loops[] = ['name' => $tag->name, 'set' => $set, 'base' => $base, 'indexes' => $reference->indexes, 'asked' => []];
        return $this->with($loops);
    }

    private function inSection(Tag $tag): self
    {
        $reference = $tag->references[0];
        if ($reference->isPath()) {
            $this->known[$tag->source] ??= $this->engine->render("{$tag->source}x{/optional}", $this->data)[0] === 'x';
            return $this->with($this->loops, $this->known[$tag->source]);
        }
        $number = $this->loop($reference->namespace);
        return $number === null ? $this->with($this->loops, false) : $this->with($this->narrowed($number, $tag));
    }

    /** The loops when only those elements of one of them count at which a block is entered, and what lies in them. */
    private function narrowed(int $number, Tag $block): array
    {
        $loops = $this->loops;
        $loops[$number]['asked'][] = $block;
        $loops[$number]['set'] = $loops[$number]['set']->entering($block, $this->engine);
        $changed = [$number => true];
        for ($i = $number + 1; $i < count($loops); $i++) {
            if (isset($changed[$loops[$i]['base']])) {
                $changed[$i] = true;
                $set = $loops[$loops[$i]['base']]['set']->inside($loops[$i]['indexes']);
                foreach ($loops[$i]['asked'] as $asked) {
                    $set = $set->entering($asked, $this->engine);
                }
                $loops[$i]['set'] = $set;
            }
        }
        return $loops;
    }

    private function with(array $loops, bool $isShown = true): self
    {
        foreach ($loops as $loop) {
            $isShown = $isShown && $loop['set']->elements;
        }
        return new self($this->engine, $this->data, $this->known, $loops, $isShown);
    }

    /** The number of the loop that a name means: the outermost one that bears it; without a name the innermost. */
    private function loop(string $name): ?int
    {
        if ($name === '') {
            return array_key_last($this->loops);
        }
        $number = array_search($name, array_column($this->loops, 'name'), true);
        return $number === false ? null : $number;
    }
}
