<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Tag;

/**
 * The elements that a loop comes to, whatever the loops around it are at: each once, so that loops inside each other
 * make no products. What has been asked is remembered.
 */
final class ElementSet
{
    /** @var array<string, self> */
    private array $derived = [];

    /** @var array<string, array{int, list<mixed>}> */
    private array $values = [];

    /**
     * @param list<mixed> $elements
     * @param list<string> $keys
     */
    private function __construct(public readonly array $elements, public readonly array $keys)
    {
    }

    /** What loops walk that lead to these values: only arrays are walked, and their element "num" in their place. */
    public static function walked(array $values): self
    {
        $elements = [];
        $keys = [];
        foreach ($values as $value) {
            $rows = is_array($value) && array_key_exists('num', $value) ? $value['num'] : $value;
            foreach (is_array($rows) ? array_keys($rows) : [] as $key) {
                $elements[] = self::at($rows, $key);
                $keys[] = (string) $key;
            }
        }
        return new self($elements, $keys);
    }

    /** The set of a loop over what lies at these indexes in each element. @param list<string> $indexes */
    public function inside(array $indexes): self
    {
        return $this->derived[implode('::', $indexes)] ??= self::walked($this->values($indexes)[1]);
    }

    /** The elements at which a block is entered that asks for something in them: sections that show, loops that run. */
    public function entering(Tag $block, Engine $engine): self
    {
        return $this->derived[$block->source] ??= $this->filtered($block, $engine);
    }

    /**
     * What lies at these indexes in the elements: for how many there is nothing, and the values.
     *
     * @param list<string> $indexes
     * @return array{int, list<mixed>}
     */
    public function values(array $indexes): array
    {
        $name = implode('::', $indexes);
        if (!isset($this->values[$name])) {
            $found = [];
            foreach ($this->elements as $element) {
                array_push($found, ...self::find($element, $indexes));
            }
            $this->values[$name] = [count($this->elements) - count($found), $found];
        }
        return $this->values[$name];
    }

    /** The value at these indexes in an array, as the engine finds it. @return array{}|array{mixed} */
    public static function find(mixed $value, array $indexes): array
    {
        foreach ($indexes as $i => $index) {
            if (!is_array($value) || !array_key_exists($index, $value)) {
                return [];
            }
            $value = $i < count($indexes) - 1 ? self::at($value, $index) : $value[$index];
        }
        return [$value];
    }

    private static function at(array $array, int|string $key): mixed
    {
        // As PHP itself does, but for the reflection.
        $key = array_key_first([$key => true]);
        // No path leads through a PHP reference: what it holds can be printed only.
        return is_array($array[$key]) && \ReflectionReference::fromArrayElement($array, $key) !== null
            ? new Closed()
            : $array[$key];
    }

    private function filtered(Tag $tag, Engine $engine): self
    {
        $reference = $tag->references[0];
        if ($tag->kind->isLoop()) {
            $shown = array_keys(array_filter($this->elements, static fn(mixed $element): bool =>
                self::walked(self::find($element, $reference->indexes))->elements !== []));
        } elseif ($reference->type === Reference::KEY) {
            $isWanted = $tag->kind === Kind::Optional;
            $shown = array_keys(array_filter($this->keys, fn(string $key): bool => ($key === $tag->compared) === $isWanted));
        } else {
            $asked = implode('::', ['*', ...$reference->indexes]) . ($tag->compared === '' ? '' : " $tag->compared");
            $question = "{dynamic s}{{$tag->kind->value} $asked}{[*]},{/optional}{/dynamic}";
            [$text] = $engine->render($question, ['s' => $this->elements]);
            $shown = explode(',', $text ?? '', -1);
        }
        $take = static fn(array $list): array => array_map(static fn($i): mixed => $list[$i], $shown);
        return new self($take($this->elements), $take($this->keys));
    }
}
