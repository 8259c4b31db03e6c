<?php

namespace TemplateTool\Needs;

/** Data to start from: with all that a page may show. */
final class Sample
{
    private const ELEMENTS = 2;

    public static function make(Need $top): array
    {
        return self::map($top, 0);
    }

    /** $round: which element of a list this belongs to. */
    private static function value(Need $need, string $key, int $round): mixed
    {
        $compared = array_keys($need->compared);
        return match (true) {
            $need->element !== null => self::list($need, $key),
            $need->children !== [] => self::map($need, $round),
            $need->isFile => '',
            $compared !== [] => (string) $compared[$round % count($compared)],
            $need->isText, $need->isString => self::words($key) . ($round > 0 ? ' ' . ($round + 1) : ''),
            default => true,
        };
    }

    private static function map(Need $need, int $round): array
    {
        $map = [];
        foreach ($need->children as $key => $child) {
            $map[$key] = self::value($child, (string) $key, $round);
        }
        return $map;
    }

    private static function list(Need $need, string $key): array
    {
        $list = [];
        $count = max([self::ELEMENTS, ...array_map(static fn($index): int => $index + 1, array_keys($need->children))]);
        $keys = array_pad(array_slice(array_keys($need->keys), 0, $count), $count, null);
        $isMap = $need->isMap() === true;
        foreach ($keys as $round => $name) {
            $element = self::value($need->element, preg_replace('/s\z/', '', $key), $round);
            if (isset($need->children[$round])) {
                $own = self::value($need->children[$round], $key, 0);
                $element = is_array($own) && is_array($element) ? array_replace_recursive($element, $own) : $own;
            }
            $list[$isMap ? $name ?? $round : $round] = $element;
        }
        return $list;
    }

    /** "old_price" as "Old price". */
    private static function words(string $key): string
    {
        return ucfirst(trim(strtr($key, '_-.', '   '))) ?: 'Text';
    }
}
