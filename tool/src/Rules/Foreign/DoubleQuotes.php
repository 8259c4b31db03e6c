<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class DoubleQuotes implements Habit
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'double-quotes',
                summary: 'a text in double quotes',
                why: <<<'TEXT'
                    Texts stand in single quotes. Double ones are part of a name, or of the value that a section
                    compares with.
                    TEXT,
                bad: '{name "nobody"}',
                good: '{name \'nobody\'}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        $argument = $tag->argument;
        if ($tag->kind->isOptional()) {
            $start = strlen(strtok($argument, ' ') ?: '') + 1;
            $isQuoted = preg_match('~^"[^"]*"$~', $tag->compared) === 1;
            $length = strlen($tag->compared);
        } else {
            $isPlain = $tag->kind === Kind::Plain || $tag->kind->isEscaping();
            $isQuoted = $isPlain && preg_match('~(?<!\S)"[^"]*"$~', $argument, $match, PREG_OFFSET_CAPTURE) === 1
                && !preg_match('~^"[^"]*"\s*[:,]~', $argument);
            [$text, $start] = $match[0] ?? ['', 0];
            $length = strlen($text);
        }
        if ($isQuoted) {
            $text = substr($argument, $start + 1, $length - 2);
            $message = "texts stand in single quotes: write '$text'";
            yield new Problem('double-quotes', $message, $tag->argumentOffset + $start, $length);
        }
    }
}
