<?php

namespace TemplateTool\Server;

use TemplateTool\Files\Files;
use TemplateTool\Json\Broken;
use TemplateTool\Json\JsonText;
use TemplateTool\Json\Places;
use TemplateTool\Syntax\Source;

/** Sample data as it is written: where its values stand, and what templates call them. */
final class SampleText
{
    private const MOST_MEANINGS = 64;

    private Places $places;

    private function __construct(public readonly Source $source, private array $data)
    {
        $this->places = new Places($source->text);
    }

    /** Null when there is no such file, or it holds no data. $text: the one that is open. */
    public static function of(string $path, ?string $text): ?self
    {
        $isSmall = is_file($path) && filesize($path) <= Files::LARGEST;
        $text ??= $isSmall ? (string) @file_get_contents($path) : '';
        try {
            $data = JsonText::decode($text, $path);
        } catch (Broken) {
            return null;
        }
        return is_array($data) ? new self(new Source($path, $text, $path), $data) : null;
    }

    /**
     * The first place of a value, in a list that of its first element which has it.
     *
     * @param list<string> $path as Scope::path() has it
     * @return ?array{int, int} offset and length of its key, or of what begins it
     */
    public function place(array $path): ?array
    {
        $keys = self::first($this->data, $path);
        if (!$keys) {
            return null;
        }
        $offset = $this->places->of($keys);
        return [$offset, $this->places->lengthAt($offset)];
    }

    /**
     * What the key at an offset can be called in templates: an element of a list is reached by its loop, or by its key.
     *
     * @return list<list<string>> as Scope::path() has them; empty when there is no key
     */
    public function paths(int $offset): array
    {
        $all = [[]];
        foreach ($this->places->at($offset) ?? [] as $i => $key) {
            $next = [];
            foreach ($all as $path) {
                $next[] = [...$path, $key];
                if ($i > 0) {
                    $next[] = [...$path, Scope::ELEMENT];
                    // A loop over an array with this key walks what stands there.
                    end($path) === 'num' && $next[] = [...array_slice($path, 0, -1), Scope::ELEMENT];
                }
            }
            $all = array_slice($next, 0, self::MOST_MEANINGS);
        }
        return array_values(array_filter($all));
    }

    /** The keys that lead to the first value of a path; null when there is none. @return ?list<string|int> */
    private static function first(mixed $value, array $path): ?array
    {
        if (!$path) {
            return [];
        }
        $index = array_shift($path);
        $before = [];
        $keys = [$index];
        if ($index === Scope::ELEMENT || $index === Scope::KEY) {
            if (is_array($value) && array_key_exists('num', $value)) {
                $value = $value['num'];
                $before = ['num'];
            }
            $keys = is_array($value) ? array_keys($value) : [];
        }
        foreach ($keys as $key) {
            $isThere = is_array($value) && array_key_exists($key, $value);
            $rest = $isThere ? self::first($value[$key], $path) : null;
            if ($rest !== null) {
                return [...$before, $key, ...$rest];
            }
        }
        return null;
    }
}
