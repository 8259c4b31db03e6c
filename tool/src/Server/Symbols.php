<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;

/** The structure of a template: an outline, and what can be folded. */
final class Symbols
{
    // The protocol's kinds of symbols.
    private const FILE = 1;
    private const ARRAY = 18;
    private const BOOLEAN = 17;

    /** JSON has a limit: what lies deeper stands at this depth. */
    private const DEEPEST = 60;

    public function __construct(private Workspace $workspace)
    {
    }

    /** Blocks and includes, nested as they are. */
    public function symbols(array $parameters): array
    {
        $document = $this->workspace->place($parameters)->document;
        $top = ['children' => []];
        // By depth: the list that a symbol of that depth goes into.
        $lists = [&$top['children']];
        foreach ($document->nodes as $node) {
            if ($node->tag->kind->end() === null && $node->tag->kind !== Kind::Include) {
                continue;
            }
            $depth = min($node->depth, self::DEEPEST);
            $list = &$lists[$depth];
            $list[] = $this->symbol($this->workspace->lines($document->source), $node);
            $lists[$depth + 1] = &$list[array_key_last($list)]['children'];
            unset($list);
        }
        return $top['children'];
    }

    public function folding(array $parameters): array
    {
        $document = $this->workspace->place($parameters)->document;
        $lines = $this->workspace->lines($document->source);
        $ranges = [];
        foreach ($document->nodes as $node) {
            $start = $lines->position(Spot::endOf($node))['line'];
            $end = $node->end === null ? $start : $lines->position($node->endOffset)['line'] - 1;
            if ($end > $start) {
                $ranges[] = ['startLine' => $start, 'endLine' => $end];
            }
        }
        return $ranges;
    }

    private function symbol(Lines $lines, Node $node): array
    {
        $tag = $node->tag;
        $length = Spot::endOf($node) - $node->offset;
        return [
            'name' => $tag->argument === '' ? $tag->kind->value : mb_substr($tag->argument, 0, 80),
            'detail' => $tag->kind->value,
            'kind' => match (true) {
                $tag->kind->isLoop() => self::ARRAY,
                $tag->kind === Kind::Include => self::FILE,
                default => self::BOOLEAN,
            },
            'range' => $lines->range($node->offset, ($node->end ?? $node->offset + $length) - $node->offset),
            'selectionRange' => $lines->range($node->offset, $length),
            'children' => [],
        ];
    }
}
