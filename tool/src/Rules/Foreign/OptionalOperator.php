<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Tag;

final class OptionalOperator implements Habit
{
    private const NEGATED = '~^(?:(?:not|empty)\s+|!\s*)(\S+)$~i';
    private const COMPARED = '~^(?<left>[^\s=!<>&|]+)\s*(?<sign>[=!]==?|<=?|>=?|=|&&|\|\||(?<=\s)(?:and|or|is not|is|eq|ne|gt|lt|xor)'
        . '(?=\s))\s*(?<right>\S.*)$~is';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'optional-operator',
                summary: 'an operator in "optional"',
                why: <<<'TEXT'
                    A section asks for one value, or compares one with a text that stands behind a blank and is all
                    that remains: "{optional colour red}". A sign such as "==" would be part of that text, and "!" or
                    "not" part of a name. "{!optional name}" asks for the opposite; sections inside each other are
                    "and"; anything else is decided in PHP. When the sign belongs to the text, put it into single
                    quotes.
                    TEXT,
                bad: "{optional colour == 'red'}stop{/optional}",
                good: "{optional colour 'red'}stop{/optional} {optional sign '== x'}equal{/optional}",
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        $argument = $tag->argument;
        if (!$tag->kind->isOptional()) {
            return;
        }
        if (preg_match(self::NEGATED, $argument, $match)) {
            $keyword = $tag->kind->end() && $tag->kind->value[0] === '!' ? 'optional' : '!optional';
            $message = "the opposite is written \"{{$keyword} " . Words::translated($match[1]) . '}"';
            $word = strtok($argument, " \t\n\r");
            yield $this->problem($tag, $message, 0, strlen($argument), new Reference($word, 0));
            return;
        }
        // A name in front of which nothing needs a blank, or a value behind a blank: with quotes it is a text.
        if (!preg_match(self::COMPARED, $argument, $match, PREG_OFFSET_CAPTURE) || $this->isText($tag, $match['left'][0])) {
            return;
        }
        [[$left], [$sign, $offset], [$right]] = [$match['left'], $match['sign'], $match['right']];
        $text = preg_match('~^([\'"])(.*)\1$~s', $right, $quoted) ? $quoted[2] : $right;
        $left = Words::translated($left);
        $message = match (strtolower($sign)) {
            '=', '==', '===', 'is', 'eq' => "a value is compared without a sign: write \"{optional $left '$text'}\"",
            '!=', '!==', 'is not', 'ne' => "the opposite is written \"{!optional $left '$text'}\"",
            '&&', 'and' => "for \"and\" put one section into the other: \"{optional $left}{optional "
                . Words::translated($text) . '}...{/optional}{/optional}"',
            '||', 'or' => 'for "or" make a value of its own in PHP',
            default => "\"$sign\" can't be asked for: hand over the outcome, made in PHP",
        };
        yield $this->problem($tag, $message, $offset, strlen($sign), $tag->references[0] ?? null);
    }

    /** Whether the sign belongs to a text to compare with: it stands in quotes, or all alone. */
    private function isText(Tag $tag, string $left): bool
    {
        $behind = ltrim(substr($tag->argument, strlen($left)));
        return str_starts_with($behind, "'") || preg_match('~^[=!<>&|]+$~', $behind) === 1;
    }

    private function problem(Tag $tag, string $message, int $offset, int $length, ?Reference $reference): Problem
    {
        // A comparison stays one whatever the data has; a strange name may be there.
        $isName = $reference && !preg_match('~^[^\s=!<>&|]+$~', $reference->text) || $tag->compared === '';
        $meant = $isName && $reference && $tag->complaint === null ? [$reference] : [];
        return new Problem('optional-operator', $message, $tag->argumentOffset + $offset, $length, unless: $meant);
    }
}
