<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class WrongClosingTag implements Habit
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'wrong-closing-tag',
                summary: '"{/!optional}", or the end of something that has none',
                why: <<<'TEXT'
                    "{/optional}" closes both "optional" and "!optional", "{/dynamic}" and "{/rdynamic}" close loops,
                    and no other tag has an end. Anything else that begins with a slash is a plain tag, so that the
                    section before it stays open.
                    TEXT,
                bad: '{!optional user}Who are you?{/!optional}',
                good: '{!optional user}Who are you?{/optional}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if ($tag->kind !== Kind::Plain || !preg_match('~^([/\\\\]\s*(!?)\s*|end\s+)([a-z]+)~', $tag->argument, $match)) {
            return;
        }
        [$written, , $negation, $word] = $match;
        $end = Kind::tryFrom("/$word");
        $length = strlen($written);
        if ($end !== null) {
            $edits = $negation === '' ? [] : [new Edit($tag->argumentOffset, $length, $end->value)];
            $what = $negation === '' ? '' : ', of "!optional" as well';
            $message = "this closes nothing: the closing tag is \"{{$end->value}}\"$what";
            yield new Problem('wrong-closing-tag', $message, $tag->argumentOffset, $length, [], $edits);
        } elseif (Kind::tryFrom($word)?->isEscaping()) {
            $message = "\"$word\" is a tag by itself, \"{{$word} name}\", and has no end";
            yield new Problem('wrong-closing-tag', $message, $tag->argumentOffset, $length);
        }
    }
}
