<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class Call implements Habit
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'call',
                summary: 'a call of a function or a method',
                why: <<<'TEXT'
                    A template can't call anything: "count(rows)" is looked for as a value of that name. Make the value
                    in PHP and hand it over. For escaping there are tags, "{htmlspecialchars name}".
                    TEXT,
                bad: '{count(rows)}',
                good: '{rows_total}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind === Kind::Include ? [] : Words::of($tag) as [$word, $offset]) {
            if (preg_match('~\w\(|^\(.~', $word)) {
                $isEscaping = $tag->kind->isEscaping() && $word[0] === '(';
                $message = $isEscaping
                    ? 'no parentheses here: write "' . Words::tag($tag, Words::translated($word)) . '"'
                    : 'a template can\'t call anything: hand over the finished value';
                yield new Problem('call', $message, $offset, strlen($word), unless: Words::meant($tag, $word));
                return;
            }
        }
    }
}
