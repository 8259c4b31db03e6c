<?php

namespace TemplateTool\Server;

/** Looks into sample data, for people who want to see what a reference may find there. */
final class Sample
{
    private const MOST_ELEMENTS = 50;
    private const LONGEST = 60;

    /**
     * The values at a path as Scope::path() has it; of long lists only some.
     *
     * @param list<string> $path
     * @return list<mixed>
     */
    public static function values(?array $data, array $path): array
    {
        $values = $data === null ? [] : [$data];
        foreach ($path as $index) {
            $next = [];
            foreach ($values as $value) {
                if (!is_array($value)) {
                    continue;
                }
                if ($index === Scope::ELEMENT || $index === Scope::KEY) {
                    // As loops do: an element "num" holds what is walked.
                    $rows = array_key_exists('num', $value) ? $value['num'] : $value;
                    $rows = is_array($rows) ? $rows : [];
                    array_push($next, ...array_values($index === Scope::KEY ? array_keys($rows) : $rows));
                } elseif (array_key_exists($index, $value)) {
                    $next[] = $value[$index];
                }
                if (count($next) >= self::MOST_ELEMENTS) {
                    break;
                }
            }
            $values = array_slice($next, 0, self::MOST_ELEMENTS);
        }
        return $values;
    }

    /** A value in few words. */
    public static function text(mixed $value): string
    {
        return match (true) {
            is_array($value) => array_is_list($value)
                ? 'list of ' . count($value)
                : 'array with ' . self::cut(implode(', ', array_keys($value))),
            is_string($value) => '"' . self::cut($value) . '"',
            default => self::cut(json_encode($value, JSON_PARTIAL_OUTPUT_ON_ERROR | JSON_UNESCAPED_UNICODE)),
        };
    }

    private static function cut(string $text): string
    {
        $text = preg_replace('/\s+/', ' ', $text);
        return mb_strlen($text) > self::LONGEST ? mb_substr($text, 0, self::LONGEST) . '…' : $text;
    }
}
