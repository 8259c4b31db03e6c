<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Tags\MisspeltKeyword;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class Operator implements Habit
{
    private const SIGNS = '~^(?:\?[?:]?|[:,+/=<>-]|[=!<>]==?|&&|\|\||=>|!)$|\w(?:\?[?:]?|,|&&|\|\||[=!]==?|=)|^[!=]\w~';
    private const QUANTIFIER = '~^\d+,\d*$~';
    private const WORDS = '~^(?:and|or|not|xor|is|in|as|eq|ne|gt|lt)$~i';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'operator',
                summary: 'an operator in a tag that prints a value',
                why: <<<'TEXT'
                    A plain tag takes names, separated by blanks, and prints the first that exists; a text in single
                    quotes at the end is for when none does. There are no expressions: an operator is looked for as a
                    name, too. What has to be reckoned or chosen is handed over as a value.
                    TEXT,
                bad: '{nick ?? name}',
                good: '{nick name}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        $words = $tag->kind === Kind::Plain || $tag->kind->isEscaping() ? Words::of($tag) : [];
        $hasMore = count($words) > 1 || $tag->fallback !== null || $tag->complaint !== null;
        foreach ($words && MisspeltKeyword::meant($words[0][0]) ? [] : $words as $i => [$word, $offset]) {
            // A star alone is the element of a loop.
            $isSum = ($word === '*' || $word === '%') && $i > 0 && is_numeric($words[$i + 1][0] ?? '');
            $isSign = preg_match(self::SIGNS, $word) && ($hasMore || preg_match('~\w~', $word)) && $word[0] !== '"'
                && !preg_match(self::QUANTIFIER, $word);
            $isWord = $hasMore && preg_match(self::WORDS, $word) && ($i > 0 || strtolower($word) === 'not');
            if (!$isSign && !$isWord && !$isSum) {
                continue;
            }
            $message = match (true) {
                str_contains($word, '??') || $word === '?:' || $word === 'or' || $word === '||' || $word === ',' || str_ends_with($word, ',')
                    => 'the alternatives of a tag stand side by side, with blanks between them: "{nick name \'none\'}"',
                $word[0] === '!' || $word === 'not' => 'there are no expressions: what isn\'t there is asked for by'
                    . ' "{!optional name}...{/optional}"',
                default => "there are no expressions, and \"$word\" is looked for as a name: hand over the outcome",
            };
            yield new Problem('operator', $message, $offset, strlen($word), unless: Words::meant($tag, $word));
            return;
        }
    }
}
