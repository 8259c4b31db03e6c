<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Tag;

final class QuotedKey implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'quoted-key',
                summary: 'quotes around a key that is compared',
                why: <<<'TEXT'
                    When a section compares a value, quotes around the text are taken off. When it compares a key,
                    they aren't: '3' with quotes equals no key 3.
                    TEXT,
                bad: "{dynamic rows}{optional [*] 'first'}!{/optional}{*}{/dynamic}",
                good: '{dynamic rows}{optional [*] first}!{/optional}{*}{/dynamic}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind->isOptional() ? $tag->references : [] as $reference) {
            if ($reference->type === Reference::KEY && str_contains($tag->compared, "'")) {
                $message = 'keys are compared together with the quotes: leave them out';
                $start = $reference->offset + strlen($reference->text) + 1;
                yield new Problem(
                    'quoted-key',
                    $message,
                    $start,
                    strlen($tag->compared),
                    // With other quotes, or with blanks at the ends, it isn't known which key is meant.
                    edits: preg_match("/^'([^'\\s](?:[^']*[^'\\s])?)'\\z/", $tag->compared, $match)
                        ? [new Edit($start, strlen($tag->compared), $match[1])]
                        : []
                );
            }
        }
    }
}
