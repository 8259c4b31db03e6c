<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Kind;

/** What the editor tells about the keywords of tags. */
final class Keywords
{
    /** By keyword: what the tag does, in Markdown. @return array<string, string> */
    public static function texts(): array
    {
        $escaping = 'Prints a value as PHP\'s `%s` does. Takes one reference; where it finds nothing, prints'
            . ' nothing. %s';
        return [
            'include' => 'Puts another template here. The name is looked up in the include path; data may hold it.',
            'optional' => 'Shows what follows, up to `{/optional}`, when the value exists and is true, or, with a'
                . ' second word, when it equals that.',
            '!optional' => 'Shows what follows, up to `{/optional}`, when `{optional}` wouldn\'t.',
            'dynamic' => 'Repeats what follows, up to `{/dynamic}`, for each element of an array. `*` is the element,'
                . ' `[*]` its key; with a name, as in `{dynamic row,rows}`, also `row::*` and `row::[*]`.',
            'rdynamic' => 'As `{dynamic}`, from the last element to the first. Ends with `{/rdynamic}`.',
            'htmlspecialchars' => sprintf($escaping, 'htmlspecialchars', 'For text and attributes in double quotes.'),
            'htmlentities' => sprintf($escaping, 'htmlentities', 'For text and attributes in double quotes.'),
            'addslashes' => sprintf($escaping, 'addslashes', 'For texts in quotes inside a script.'),
            'rawurlencode' => sprintf($escaping, 'rawurlencode', 'For parts of an address.'),
        ];
    }

    /** What is written behind the opening brace to get this tag, as a snippet. */
    public static function snippet(Kind $kind): string
    {
        return match (true) {
            $kind === Kind::Include => 'include ${1:file.tpl}}$0',
            $kind->isLoop() => $kind->value . ' ${1:name},${2:list}}$0{' . $kind->end()->value . '}',
            $kind->isOptional() => $kind->value . ' ${1:value}}$0{/optional}',
            default => $kind->value . ' ${1:value}}$0',
        };
    }

    /** Those that begin a tag. @return list<Kind> */
    public static function kinds(): array
    {
        return array_values(array_filter(
            Kind::cases(),
            static fn(Kind $kind): bool => $kind !== Kind::Plain && !$kind->isEnd()
        ));
    }
}
