<?php

namespace TemplateTool\Rules;

/** All rules, and what is known about each warning. */
final class Catalogue
{
    /** @var list<class-string<Rule>> in the order in which "template explain" lists them */
    public const RULES = [
        Tags\KeywordPrefix::class,
        Tags\MisspeltKeyword::class,
        Tags\BraceInTag::class,
        Tags\CutOffTag::class,
        Tags\BlankAtComma::class,
        Tags\IntegerIndex::class,
        Tags\BlankInReference::class,
        Tags\BlankInComparison::class,
        Tags\QuotedKey::class,

        Loops\MissingLoop::class,

        Includes\MissingInclude::class,

        Data\Values::class,

        Security\Escaping::class,
        Security\IncludeFromData::class,
    ];

    /** @return array<string, Warning> by name */
    public static function all(): array
    {
        static $all = [];
        foreach ($all ? [] : self::RULES as $rule) {
            foreach ($rule::warnings() as $warning) {
                $all[$warning->name] = $warning;
            }
        }
        return $all;
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
