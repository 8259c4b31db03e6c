<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class CutOffTag implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'cut-off-tag',
                summary: 'the template ends inside a tag',
                why: <<<'TEXT'
                    The engine takes a tag that the end of the file cuts off for a whole one. It is likely that a
                    "}" or the end of the file is missing.
                    TEXT,
                bad: 'Yours, {name',
                good: 'Yours, {name}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        if ($tag->isCutOff) {
            yield new Problem('cut-off-tag', 'the template ends inside this tag', 0, strlen($tag->source));
        }
    }
}
