<?php

namespace TemplateTool\Check;

/** What is known about each warning. */
final class Catalogue
{
    /**
     * For each name: "summary", "why", the examples "bad" and "good", and where an example needs them "data" and
     * "security".
     *
     * @return array<string, array<string, mixed>>
     */
    public static function all(): array
    {
        static $all = null;
        return $all ??= require dirname(__DIR__, 2) . '/warnings.php';
    }

    /** @return list<string> */
    public static function names(): array
    {
        return array_keys(self::all());
    }

    /** For a name that doesn't exist. */
    public static function suggestion(string $name): string
    {
        $distances = [];
        foreach (self::names() as $known) {
            $distances[$known] = levenshtein($name, $known);
        }
        asort($distances);
        $nearest = array_key_first($distances);
        return $distances[$nearest] <= 4 ? "is \"$nearest\" meant?" : '"template explain" lists them all';
    }
}
