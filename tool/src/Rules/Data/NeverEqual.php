<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Reference;

final class NeverEqual implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'never-equal',
                summary: 'a comparison with something that equals no text, given the sample data',
                why: <<<'TEXT'
                    Strings and integers can be compared. A float, null, an array or an object equals nothing, and what
                    a boolean equals isn't defined: ask for its truth, or hand over the outcome.
                    TEXT,
                bad: '{optional price 9.5}cheap{/optional}',
                good: '{optional stock 9}nine left{/optional}{optional isCheap}cheap{/optional}',
                data: ['price' => 9.5, 'stock' => 9, 'isCheap' => true],
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $node) {
            $tag = $node->tag;
            $reach = $tag->compared === '' || $node->isCut() || $view->isForeign($node) ? null : $view->reach($node);
            if (!$reach?->isReached() || $tag->references[0]->type === Reference::KEY) {
                continue;
            }
            [, $values] = $reach->values($tag->references[0]);
            if ($values && !array_filter($values, static fn($value): bool => is_string($value) || is_int($value))) {
                $type = get_debug_type($values[0]);
                $advice = $type === 'bool' ? 'ask for its truth, without a value' : 'compare in PHP and hand over the outcome';
                $message = "this is of type $type, and only strings and integers can be compared: $advice";
                $reference = $tag->references[0];
                yield new Problem('never-equal', $message, $node->offset + $reference->offset, strlen($reference->text));
            }
        }
    }
}
