<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class MisspeltKeyword implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'misspelt-keyword',
                summary: 'a word that looks like a keyword with a slip in it',
                why: <<<'TEXT'
                    A tag that begins with no keyword is a plain tag. It prints the first of its references that
                    exists, so a misspelt escaping tag prints the value without escaping it. Keywords are written in
                    lower case.
                    TEXT,
                bad: '<p>{htmlspecialchar user::name}</p>',
                good: '<p>{htmlspecialchars user::name}</p>',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if ($tag->kind !== Kind::Plain || !preg_match('~^[!/]?[a-z]{5,20}(?![^\s}])~i', $tag->argument, $match)) {
            return;
        }
        [$word] = $match;
        $keyword = $word[0] !== '/' && $word === $tag->argument ? null : self::meant($word);
        if ($keyword !== null) {
            $message = "\"$word\" is no keyword, so this prints a value of that name; is \"$keyword\" meant?";
            // Any other slip may be a name after all.
            $edits = strtolower($word) === $keyword ? [new Edit($tag->argumentOffset, strlen($word), $keyword)] : [];
            yield new Problem('misspelt-keyword', $message, $tag->argumentOffset, strlen($word), edits: $edits);
        }
    }

    /** The keyword that a word was meant to be; null when it is more likely a name. */
    public static function meant(string $word): ?string
    {
        $isEnd = $word[0] === '/';
        // "options" is a likely name and no slip; what begins with a slash is no likely name.
        $most = $isEnd ? 3 : (strlen($word) < 10 ? 1 : 2);
        foreach (Kind::cases() as $kind) {
            $keyword = $kind->value;
            if ($keyword !== '' && $kind->isEnd() === $isEnd && self::distance(strtolower($word), $keyword) <= $most) {
                return $keyword;
            }
        }
        return null;
    }

    /** How many letters are wrong; two that have changed places count once. */
    private static function distance(string $word, string $keyword): int
    {
        for ($i = 0; $i + 1 < strlen($word) && $i < strlen($keyword) && $word[$i] === $keyword[$i]; $i++) {
        }
        $swapped = substr($word, 0, $i) . strrev(substr($word, $i, 2)) . substr($word, $i + 2);
        return min(levenshtein($word, $keyword), 1 + levenshtein($swapped, $keyword));
    }
}
