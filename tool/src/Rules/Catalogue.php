<?php

namespace TemplateTool\Rules;

/** All rules, and what is known about each warning. */
final class Catalogue
{
    /** @var list<class-string<Rule>> in the order in which "template explain" lists them */
    public const RULES = [
        Tags\CutOffTag::class,
        Tags\BraceInTag::class,

        Foreign\ForeignTag::class,
        Foreign\WrongClosingTag::class,
        Foreign\ForeignLoop::class,
        Foreign\OptionalOperator::class,
        Foreign\QuotedInclude::class,
        Foreign\DollarVariable::class,
        Foreign\Filter::class,
        Foreign\Call::class,
        Foreign\Member::class,
        Foreign\Operator::class,
        Foreign\DoubleQuotes::class,
        Foreign\DoubleBraces::class,
        Foreign\BlankBeforeKeyword::class,
        Foreign\AtDirective::class,
        Foreign\PhpCode::class,

        Code\LostText::class,
        Code\LostBrace::class,

        Tags\KeywordPrefix::class,
        Tags\MisspeltKeyword::class,
        Tags\BlankAtComma::class,
        Tags\IntegerIndex::class,
        Tags\BlankInReference::class,
        Tags\BlankInComparison::class,
        Tags\QuotedKey::class,

        Loops\MissingLoop::class,

        Includes\MissingInclude::class,
        Includes\StrayMark::class,

        Data\Values::class,
        Data\MissingStar::class,
        Data\NeverEqual::class,

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
        return $distances[$nearest] <= min(4, intdiv(strlen($name), 2)) ? "is \"$nearest\" meant?" : '"template explain" lists them all';
    }
}
