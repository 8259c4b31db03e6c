<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class QuotedInclude implements Habit
{
    private const QUOTED = '~^(?:file\s*=\s*|\(\s*)?([\'"])([^\'"]+)\1\s*\)?$~';
    private const MORE = '~^(?:file\s*=\s*)?[\'"]?([\w./-]+)[\'"]?\s+(?:with\b|only\b|\w+\s*=|ignore missing\b|\{).*$~s';
    private const BARE = '~^file\s*=\s*(\S+)$~';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'quoted-include',
                summary: 'an include with quotes, "file=" or values to hand over',
                why: <<<'TEXT'
                    An include tag takes the name of a file and nothing else. Quotes belong to the name, and no file is
                    called like that, so nothing is included. The included file sees all data of the page and the loops
                    around the tag; values can't be handed over.
                    TEXT,
                bad: "{include 'page/footer'}",
                good: '{include page::footer}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if ($tag->kind !== Kind::Include) {
            return;
        }
        $argument = $tag->argument;
        $edits = [];
        if (preg_match(self::QUOTED, $argument, $match)) {
            $keyword = strlen($tag->kind->value) + 1;
            $edits = [new Edit($keyword, $tag->argumentOffset + strlen($argument) - $keyword, " $match[2]")];
            $message = "the name of a file is written as it is: \"{include $match[2]}\"";
        } elseif (preg_match(self::BARE, $argument, $match)) {
            $message = 'the name of a file is written as it is: "{include ' . ltrim($match[1], '$') . '}"';
        } elseif (preg_match(self::MORE, $argument, $match)) {
            $message = "an include takes a name and nothing else: \"{include $match[1]}\" sees all data of the page";
        } else {
            return;
        }
        yield new Problem('quoted-include', $message, $tag->argumentOffset, strlen($argument), [], $edits);
    }
}
