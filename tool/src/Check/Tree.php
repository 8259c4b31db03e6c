<?php

namespace TemplateTool\Check;

use TemplateTool\Files\Files;
use TemplateTool\Files\Unreadable;
use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Tag;

/**
 * The structure of a template and of what it includes, as nested arrays for showing.
 *
 * Each node has "tag" (as written), "kind" (the keyword, or "plain"), "file", "line", "column", "offset", "length",
 * "references" and "children", and where they say something "name", "compared", "fallback", "included" (a path), "note"
 * and, given data, "settled" (what the data decides about it already).
 */
final class Tree
{
    /** What lies deeper is left out. */
    private const DEEPEST = 200;
    private const LONGEST_TEXT = 40;

    /** @var array<string, true> included files that have been shown */
    private array $shown = [];

    public function __construct(
        private Engine $engine,
        private Walker $walker,
        private Files $files,
        private ?array $data,
    ) {
    }

    /** @return list<array> */
    public function of(Document $document, Context $context): array
    {
        $top = ['children' => []];
        // By depth: the list that a node of that depth goes into.
        $lists = [&$top['children']];
        foreach ($document->nodes as $node) {
            if ($node->depth >= self::DEEPEST) {
                continue;
            }
            $list = &$lists[$node->depth];
            $list[] = $this->node($document, $node, $context);
            $lists[$node->depth + 1] = &$list[array_key_last($list)]['children'];
            unset($list);
        }
        return $top['children'];
    }

    private function node(Document $document, Node $node, Context $context): array
    {
        $tag = $node->tag;
        [$line, $column] = $document->source->position($node->offset);
        $fields = [
            'tag' => $tag->source,
            'kind' => $tag->kind->value ?: 'plain',
            'file' => $document->source->name,
            'line' => $line,
            'column' => $column,
            'offset' => $node->offset,
            'length' => ($node->end ?? $node->offset + strlen($tag->source)) - $node->offset,
            'name' => $tag->name === '' ? null : $tag->name,
            'references' => $tag->references,
            'fallback' => $tag->fallback,
            'compared' => $tag->compared === '' ? null : $tag->compared,
            'note' => $tag->complaint ?? $this->blockNote($node),
            'settled' => $tag->complaint === null && $this->data !== null ? $this->settled($tag) : null,
        ];
        $children = [];
        if ($tag->kind === Kind::Include && $tag->complaint === null) {
            [$fields['included'], $fields['note'], $children] = $this->included($document, $node, $context);
        }
        return array_filter($fields, static fn($value): bool => $value !== null) + ['children' => $children];
    }

    private function blockNote(Node $node): ?string
    {
        return match (true) {
            $node->tag->kind->end() === null => null,
            $node->end === null => 'never closed',
            $node->depth === self::DEEPEST - 1 => 'what is inside is not shown',
            default => null,
        };
    }

    /** @return array{?string, ?string, list<array>} the path of the included file, a note, and its tree */
    private function included(Document $document, Node $node, Context $context): array
    {
        $name = $node->tag->includedName($this->data);
        if (isset($context->names[$name])) {
            return [null, 'a circle: this file is being read already', []];
        }
        $path = $this->files->find($name, $context->page);
        if ($path === null || !is_file($path)) {
            return [null, 'no such file', []];
        }
        try {
            $included = $this->walker->open($path);
        } catch (Unreadable $problem) {
            return [null, $problem->getMessage(), []];
        }
        if (isset($this->shown[$included->source->path])) {
            return [$path, 'shown above', []];
        }
        $this->shown[$included->source->path] = true;
        return [$path, null, $this->of($included, $context->through($document, $node, $name, false))];
    }

    private function settled(Tag $tag): ?string
    {
        $references = $tag->references;
        if ($tag->kind === Kind::Include || array_filter($references, fn($each): bool => !$each->isPath())) {
            $first = null;
            foreach ($tag->kind === Kind::Plain ? $references : [] as $reference) {
                if (!$reference->isPath() || $reference->find($this->data)) {
                    $first = $reference;
                    break;
                }
            }
            if (!$first?->isPath()) {
                return null;
            }
        }
        $end = $tag->kind->end();
        $block = $end ? ($tag->swallows || $tag->isCutOff ? null : "x{{$end->value}}") : '';
        [$text] = $block === null ? [null] : $this->engine->render($tag->source . $block, $this->data);
        return match (true) {
            $text === null => null,
            $tag->kind->isLoop() => strlen($text) . (strlen($text) === 1 ? ' round' : ' rounds'),
            $tag->kind->isOptional() => $text === '' ? 'hidden' : 'shown',
            $text === '' => 'prints nothing',
            $text === '{' . $tag->argument . '}' && $references && !$this->isFound($references) => 'finds nothing',
            default => 'prints ' . $this->quoted($text),
        };
    }

    private function isFound(array $references): bool
    {
        return array_filter($references, fn($each): bool => $each->find($this->data) !== null) !== [];
    }

    private function quoted(string $text): string
    {
        $part = preg_match('/^.{0,' . self::LONGEST_TEXT . '}/su', $text, $match) ? $match[0] : '';
        return '"' . $part . (strlen($part) < strlen($text) ? '…' : '') . '"';
    }
}
