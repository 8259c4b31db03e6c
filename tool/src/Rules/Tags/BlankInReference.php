<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class BlankInReference implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'blank-in-reference',
                summary: 'a blank inside the reference of an escaping tag or a loop',
                why: <<<'TEXT'
                    Only a plain tag takes alternatives and a text in quotes. An escaping tag and a loop take one
                    reference, and a blank inside it belongs to a name. For alternatives with escaping, use
                    sections.
                    TEXT,
                bad: "{htmlspecialchars name 'nobody'}",
                good: '{optional name}{htmlspecialchars name}{/optional}{!optional name}nobody{/optional}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind->isEscaping() || $tag->kind->isLoop() ? $tag->references : [] as $reference) {
            // Blanks at the front are those beside a comma.
            if (preg_match('/\S\s/', $reference->text)) {
                $what = $tag->kind->isLoop() ? 'a loop' : 'an escaping tag';
                $message = "$what takes one reference, nothing else: all of \"$reference->text\" is taken for a name";
                yield new Problem('blank-in-reference', $message, $reference->offset, strlen($reference->text));
            }
        }
    }
}
