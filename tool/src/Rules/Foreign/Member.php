<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class Member implements Habit
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'member',
                summary: 'a dot, an arrow or brackets between names',
                why: <<<'TEXT'
                    What lies inside an array stands behind "::". A dot, an arrow or brackets belong to the name:
                    "user.name" is the value of exactly that name at the top of the data. Where sample data has such a
                    value, nothing is said.
                    TEXT,
                bad: '{user.name}',
                good: '{user::name}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind === Kind::Include ? [] : Words::of($tag) as [$word, $offset]) {
            if (is_numeric($word) || !preg_match('~\w\.\w|->|\w\[(?!\*\])~', $word)) {
                continue;
            }
            $isFile = $tag->kind === Kind::Plain && preg_match('~\.(?:tpl|html?|php|twig|inc)$~', $word);
            $right = $isFile ? "{include $word}" : Words::tag($tag, Words::translated($word));
            $message = $isFile
                ? "this looks for a value of the name \"$word\": is \"$right\" meant?"
                : "what lies inside stands behind \"::\": write \"$right\"";
            yield new Problem('member', $message, $offset, strlen($word), unless: Words::meant($tag, $word));
            return;
        }
    }
}
