<?php

namespace TemplateTool\Report;

use TemplateTool\Syntax\Reference;

/** The structure of a template for people: a tree with the line of each tag, and what is known about it. */
final class TreeText
{
    private const WIDEST = 60;

    /** @var list<array{string, string, string, string}> line number, branches, tag, details */
    private array $rows = [];

    public function __construct(private Paint $paint)
    {
    }

    /** @param list<array> $nodes of a Check\Tree */
    public function make(string $title, array $nodes): string
    {
        $this->rows = [];
        $this->add($nodes, '');
        $width = 0;
        foreach ($this->rows as [, $branches, $tag]) {
            $width = max($width, min(self::WIDEST, mb_strwidth($branches . $tag)));
        }
        $text = ($this->paint)($title, '', 'bold') . "\n";
        foreach ($this->rows as [$line, $branches, $tag, $details]) {
            $gap = str_repeat(' ', max(0, $width - mb_strwidth($branches . $tag)));
            $text .= rtrim(($this->paint)(sprintf('%4s ', $line), 'gray') . $branches
                . ($this->paint)($tag, 'cyan') . "$gap  $details") . "\n";
        }
        return $text;
    }

    private function add(array $nodes, string $branches): void
    {
        $last = array_key_last($nodes);
        foreach ($nodes as $i => $node) {
            $tag = Text::visible($node['tag']);
            $tag = mb_strwidth($tag) > self::WIDEST ? mb_strimwidth($tag, 0, self::WIDEST, '…') : $tag;
            $branch = $branches . ($i === $last ? '└─ ' : '├─ ');
            $this->rows[] = [(string) $node['line'], $branch, $tag, Text::visible($this->details($node))];
            $this->add($node['children'], $branches . ($i === $last ? '   ' : '│  '));
        }
    }

    private function details(array $node): string
    {
        $details = [];
        if (isset($node['name'])) {
            $details[] = "loop \"$node[name]\"";
        }
        if (isset($node['included'])) {
            $details[] = $node['included'];
        } elseif ($node['kind'] !== 'include') {
            $details[] = implode(', or ', array_map($this->reference(...), $node['references']));
        }
        if (isset($node['compared'])) {
            $details[] = "compared with \"$node[compared]\"";
        }
        if (isset($node['fallback'])) {
            $details[] = ($node['references'] ? 'or ' : '') . "the text \"$node[fallback]\"";
        }
        $text = implode(', ', array_filter($details));
        if (isset($node['settled'])) {
            $text .= ": $node[settled]";
        }
        return isset($node['note']) ? trim("$text ($node[note])") : $text;
    }

    private function reference(Reference $reference): string
    {
        $loop = $reference->namespace === '' ? 'the innermost loop' : "\"$reference->namespace\"";
        $indexes = implode(' > ', $reference->indexes);
        return match ($reference->type) {
            Reference::PATH => "path $indexes",
            Reference::KEY => "key of $loop",
            Reference::ELEMENT => "element of $loop" . ($indexes === '' ? '' : " > $indexes"),
        };
    }
}
