<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Tag;

/** The argument of a tag as people from other languages read it: words between blanks. */
final class Words
{
    // A declaration of CSS, a pair of JSON, elements: braces that weren't meant as a tag, and print as they stand.
    private const CODE = '~^"?[\w-]+"?\s*:(?!:)|;|</~';

    /**
     * Without the text in quotes that ends a plain tag, and without the value that a section compares with.
     *
     * @return list<array{string, int}> the words with their offsets in the tag
     */
    public static function of(Tag $tag): array
    {
        $argument = match (true) {
            $tag->kind === Kind::Plain => preg_replace("~(?<!\S)'.*~s", '', $tag->argument),
            $tag->kind->isOptional() => strtok($tag->argument, ' ') ?: '',
            default => $tag->argument,
        };
        if ($tag->kind === Kind::Plain && preg_match(self::CODE, $argument)) {
            return [];
        }
        preg_match_all('~\S+~', $argument, $matches, PREG_OFFSET_CAPTURE);
        return array_map(
            static fn(array $match): array => [$match[0], $tag->argumentOffset + $match[1]],
            $matches[0]
        );
    }

    /** How this language writes what another one calls "$user->name|upper" or "user['name']". */
    public static function translated(string $word): string
    {
        $word = preg_replace(['~\|.*~s', '~\((.*)\)~s', '~[$"!]~', '~->|\.(?!\*)~'], ['', '::$1', '', '::'], $word);
        $word = preg_replace('~\[(?!\*\])[\'"]?([^]\'"]*)[\'"]?\]~', '::$1', $word);
        $word = trim(preg_replace('~:{3,}~', '::', $word), ':,');
        return $word === '' ? 'name' : $word;
    }

    /** The whole tag as it would be written with this argument. */
    public static function tag(Tag $tag, string $argument): string
    {
        return '{' . $tag->kind->value . ($tag->kind === Kind::Plain ? '' : ' ') . $argument . '}';
    }

    /**
     * What a word looks up, if it is taken as it is written. Where the sample data has that, nothing is foreign about it.
     *
     * @return list<Reference>
     */
    public static function meant(Tag $tag, string $word): array
    {
        return $tag->complaint === null ? [new Reference($word, 0)] : [];
    }
}
