<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Reference;

final class MissingStar implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'missing-star',
                summary: 'a name without a star that only the rows of a loop have, given the sample data',
                why: <<<'TEXT'
                    A name without a star begins at the top of the data, inside loops as well. What belongs to the
                    element of the loop is "*::name", or "row::*::name" where the loop is "{dynamic row,rows}".
                    TEXT,
                bad: '{dynamic row,rows}{name}{/dynamic}',
                good: '{dynamic row,rows}{*::name} {row::*::name} {title}{/dynamic}',
                data: ['title' => 'Lamps', 'rows' => [['name' => 'Dome'], ['name' => 'Clip']]],
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $node) {
            $meant = $node->tag->complaint === null && !$node->isCut() && !$view->isForeign($node)
                ? self::meant($view, $node)
                : null;
            if ($meant !== null) {
                [$reference, $right] = $meant;
                $message = "this begins at the top of the data, which has no such value: in the loop it is \"$right\"";
                $offset = $node->offset + $reference->offset;
                yield new Problem('missing-star', $message, $offset, strlen($reference->text));
            }
        }
    }

    /** The first reference of a tag that only the elements of a loop have, and how it is written right. */
    public static function meant(View $view, Node $node): ?array
    {
        $reach = $node->tag->kind === Kind::Include ? null : $view->reach($node);
        if (!$reach?->isReached() || !$reach->names() && $node->loop < 0 && !$view->context->inLoop) {
            return null;
        }
        // With several alternatives some may be missing; all of them are here.
        foreach ($node->tag->references as $reference) {
            if ($reach->values($reference)[1]) {
                return null;
            }
        }
        foreach ($node->tag->references as $reference) {
            foreach ($reference->isPath() && $reference->text !== '' ? self::candidates($reference, $reach->names()) : [] as $right) {
                if ($reach->values(new Reference($right, 0))[1]) {
                    return [$reference, $right];
                }
            }
        }
        return null;
    }

    /** @return list<string> */
    private static function candidates(Reference $reference, array $names): array
    {
        [$first, $rest] = explode('::', $reference->text, 2) + [1 => ''];
        $candidates = in_array($first, $names, true) ? ["$first::*" . ($rest === '' ? '' : "::$rest")] : [];
        $candidates[] = "*::$reference->text";
        foreach ($names as $name) {
            $candidates[] = "$name::*::$reference->text";
        }
        return $candidates;
    }
}
