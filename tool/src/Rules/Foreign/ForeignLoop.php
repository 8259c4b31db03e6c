<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class ForeignLoop implements Habit
{
    private const ROWS_AS_ROW = '~^\(?(\S+)\s+as\s+(?:(\S+)\s*=>\s*)?([^\s)]+)\)?$~i';
    private const ROW_IN_ROWS = '~^\(?(?:([^\s,]+)\s*,\s*)?(\S+)\s+(?:in|of|from)\s+([^\s)]+)\)?$~i';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'foreign-loop',
                summary: '"as" or "in" in a loop',
                why: <<<'TEXT'
                    The name of a loop stands in front of what it walks, with a comma between them and no blank:
                    "{dynamic row,rows}". All of "rows as row" would be taken for the name of one list. In the loop "*"
                    is the element and "[*]" its key, "row::*" and "row::[*]" from a loop further inside.
                    TEXT,
                bad: '{dynamic rows as row}{*}{/dynamic}',
                good: '{dynamic row,rows}{*}{/dynamic}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if (!$tag->kind->isLoop()) {
            return;
        }
        if (preg_match(self::ROWS_AS_ROW, $tag->argument, $match)) {
            [, $list, $key, $name] = $match;
        } elseif (preg_match(self::ROW_IN_ROWS, $tag->argument, $match)) {
            [, $key, $name, $list] = $match;
        } else {
            return;
        }
        $name = Words::translated($name);
        $right = Words::tag($tag, "$name," . Words::translated($list));
        $keyHint = $key === '' ? '' : ", and its key is \"$name::[*]\"";
        $message = "a loop and its name are written \"$right\"$keyHint";
        $length = strlen($tag->argument);
        yield new Problem('foreign-loop', $message, $tag->argumentOffset, $length, unless: $tag->references);
    }
}
