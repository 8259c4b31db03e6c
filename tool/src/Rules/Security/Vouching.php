<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Rules\View;
use TemplateTool\Syntax\Action;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Reference;

/**
 * What authors vouch for. The mark is a hidden section that begins with "vouched", right in front of the tag:
 * {optional}vouched: our own Markdown{/optional}{body}. References can also be listed in the project's file.
 */
final class Vouching
{
    private const MARK = '{optional}vouched{/optional}';

    /** $number: of the tag among the document's nodes. */
    public static function has(View $view, int $number): bool
    {
        $references = $view->document->nodes[$number]->tag->references;
        $texts = array_map(static fn(Reference $each): string => $each->text, $references);
        return self::isMarked($view->document, $number) || ($texts && array_diff($texts, $view->vouched) === []);
    }

    /** @return list<Action> */
    public static function actions(Node $node): array
    {
        return [new Action(Action::VOUCH, 'Vouch for this value', [new Edit($node->offset, 0, self::MARK)])];
    }

    /** Whether a node is such a mark. */
    public static function isMark(Document $document, Node $node): bool
    {
        if ($node->tag->kind !== Kind::Optional || $node->tag->argument !== '' || $node->endOffset === null) {
            return false;
        }
        $start = $node->offset + strlen($node->tag->source);
        return preg_match('~\G\s*vouched\b~', $document->source->text, $match, 0, $start) === 1
            && $start + strlen($match[0]) <= $node->endOffset;
    }

    private static function isMarked(Document $document, int $number): bool
    {
        $mark = $document->nodes[$number - 1] ?? null;
        return $mark && $mark->end === $document->nodes[$number]->offset && self::isMark($document, $mark);
    }
}
