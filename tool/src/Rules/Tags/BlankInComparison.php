<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class BlankInComparison implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'blank-in-comparison',
                summary: 'a blank too many in a section that compares',
                why: <<<'TEXT'
                    Exactly one blank separates the reference from the value to compare with. What follows belongs
                    to the value, further blanks included, and a text with blanks in front equals no text without
                    them. A tab or a line break doesn't separate at all.
                    TEXT,
                bad: '{optional colour  red}stop{/optional}',
                good: '{optional colour red}stop{/optional}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind->isOptional() ? $tag->references : [] as $reference) {
            if (preg_match('/\s/', $reference->text, $match, PREG_OFFSET_CAPTURE)) {
                $message = 'only a blank ends the reference here: a tab or a line break belongs to it';
                yield new Problem('blank-in-comparison', $message, $reference->offset + $match[0][1], 1);
            } elseif (str_starts_with($tag->compared, ' ')) {
                $length = strspn($tag->compared, ' ');
                $message = 'only one blank may stand here: the others belong to the value, which then equals no text';
                $start = $reference->offset + strlen($reference->text) + 1;
                yield new Problem('blank-in-comparison', $message, $start, $length);
            }
        }
    }
}
