<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class DollarVariable implements Habit
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'dollar-variable',
                summary: 'a "$" in front of a name',
                why: <<<'TEXT'
                    Names of values are written without a "$", and what lies inside an array behind "::". With the "$"
                    a value is looked for whose name begins with that sign.
                    TEXT,
                bad: '{htmlspecialchars $user->name}',
                good: '{htmlspecialchars user::name}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach (Words::of($tag) as [$word, $offset]) {
            if (preg_match('~(?<!\w)\$[A-Za-z_]~', $word)) {
                $right = Words::tag($tag, Words::translated($word));
                $message = "names are written without \"$\": write \"$right\"";
                yield new Problem('dollar-variable', $message, $offset, strlen($word), unless: Words::meant($tag, $word));
                return;
            }
        }
    }
}
