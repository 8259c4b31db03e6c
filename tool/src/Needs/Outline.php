<?php

namespace TemplateTool\Needs;

/** What a page needs, for people: a line for each path. */
final class Outline
{
    private const WIDEST = 50;

    public static function make(Need $top): string
    {
        $rows = [];
        foreach ($top->children as $key => $child) {
            self::add($rows, (string) $key, $child);
        }
        foreach (self::rules($top, '') as $path => $notes) {
            array_push($rows[$path][2], ...array_diff($notes, $rows[$path][2]));
        }
        $widths = [0, 0];
        foreach ($rows as $path => [$kind]) {
            $widths = [max($widths[0], min(self::WIDEST, mb_strwidth($path))), max($widths[1], strlen($kind))];
        }
        $text = '';
        foreach ($rows as $path => [$kind, $places, $notes]) {
            $gap = str_repeat(' ', max(0, $widths[0] - mb_strwidth((string) $path)));
            $text .= rtrim("$path$gap  " . str_pad($kind, $widths[1]) . '  ' . implode(', ', $notes)
                . ($places ? ($notes ? '  ' : '') . "($places)" : '')) . "\n";
        }
        return $text;
    }

    private static function add(array &$rows, string $path, Need $need): void
    {
        $notes = $need->isRequired || str_ends_with($path, '*') ? [] : ['optional'];
        $kind = match (true) {
            $need->isMap() => 'map',
            $need->element !== null => $need->isMap() === false ? 'list' : 'list or map',
            $need->isFile => 'file name',
            $need->isString => 'string',
            $need->isText => 'text',
            $need->compared !== [] => 'text',
            $need->isFlag => 'flag',
            default => null,
        };
        if ($need->isFlag && $kind !== 'flag') {
            $notes[] = 'shown when true';
        }
        foreach (['compared' => 'compared with', 'keys' => 'with the keys'] as $property => $words) {
            if ($need->$property) {
                $texts = array_map(static fn($text): string => "\"$text\"", array_keys($need->$property));
                $notes[] = "$words " . implode(', ', $texts);
            }
        }
        if ($kind === null) {
            // An element of which only the key is wanted, or how many there are.
            return;
        }
        $places = array_keys($need->places);
        $rows[$path] = [$kind, implode(', ', array_slice($places, 0, 2)) . (count($places) > 2 ? ' …' : ''), $notes];
        foreach ($need->children as $key => $child) {
            self::add($rows, "{$path}::$key", $child);
        }
        if ($need->element) {
            self::add($rows, "{$path}::*", $need->element);
        }
    }

    /** @return array<string, list<string>> by path: when it has to be there */
    private static function rules(Need $need, string $prefix): array
    {
        $notes = [];
        foreach ($need->rules as $rule) {
            $paths = array_map(static fn(array $path): string => $prefix . self::text($path), $rule->alternatives);
            $conditions = array_map(static fn(Guard $guard): string => ($guard->isNegated ? 'without ' : 'with ')
                . $prefix . self::text($guard->path) . ($guard->compared === null ? '' : " \"$guard->compared\""), $rule->guards);
            foreach ($paths as $path) {
                $others = array_diff($paths, [$path]);
                $notes[$path][] = 'needed' . ($conditions ? ' ' . implode(' and ', $conditions) : '')
                    . ($others ? ' unless there is ' . implode(' or ', $others) : '');
            }
        }
        foreach ($need->children as $key => $child) {
            $notes = array_merge_recursive($notes, self::rules($child, "$prefix$key::"));
        }
        return array_merge_recursive($notes, $need->element ? self::rules($need->element, "$prefix*::") : []);
    }

    private static function text(array $path): string
    {
        return implode('::', array_map(static fn(string $step): string => $step === Need::ELEMENT ? '*' : $step, $path));
    }
}
