<?php

namespace TemplateTool\Syntax;

/** How a document is reached: through which include tags, and inside which blocks. */
final class Context
{
    /**
     * $page: the path of the template that the way begins with; empty when it is no file.
     * $names: of the files on the way, this one's included. $loops: the names of the loops around the include tags.
     * $blocks: what stands for all blocks around them, where these make a difference.
     * $outer, $document, $include: the include tag that leads here, and how its document is reached; null in a page.
     *
     * @param array<string, true> $names
     * @param array<string, true> $loops
     */
    private function __construct(
        public readonly string $page,
        public readonly array $names,
        public readonly array $loops = [],
        public readonly bool $inLoop = false,
        private string $blocks = '',
        public readonly ?self $outer = null,
        public readonly ?Document $document = null,
        public readonly ?Node $include = null,
    ) {
    }

    /** Of a template that nothing includes. @param list<string> $names under which it can be included */
    public static function top(array $names, string $path = ''): self
    {
        return new self($path, array_fill_keys($names, true));
    }

    /** Of the file that an include tag leads to. */
    public function through(Document $document, Node $include, string $name, bool $withBlocks): self
    {
        $loops = $this->loops;
        foreach ($document->loopsAround($include) as $loop) {
            $loops[$loop->tag->name] = true;
        }
        $blocks = $this->blocks;
        foreach ($withBlocks ? $document->around($include) : [] as $block) {
            $blocks = md5($blocks . $block->tag->source);
        }
        $inLoop = $this->inLoop || $include->loop >= 0;
        $names = $this->names + [$name => true];
        return new self($this->page, $names, $loops, $inLoop, $blocks, $this, $document, $include);
    }

    /** Two contexts with the same key make the same difference to a document. */
    public function key(): string
    {
        $loops = array_keys($this->loops);
        sort($loops);
        return implode("\0", [dirname($this->page), (int) $this->inLoop, $this->blocks, ...$loops]);
    }

    public function isIncluded(): bool
    {
        return $this->outer !== null;
    }

    public function hasLoop(Node $node, string $name): bool
    {
        if ($name === '') {
            return $this->inLoop || $node->loop >= 0;
        }
        return isset($node->loops[$name]) || isset($this->loops[$name]);
    }

    /** @return list<array{file: string, line: int, column: int}> the include tags on the way, innermost first */
    public function includedFrom(): array
    {
        $places = [];
        for ($context = $this; $context->outer; $context = $context->outer) {
            $source = $context->document->source;
            [$line, $column] = $source->position($context->include->offset);
            $places[] = ['file' => $source->name, 'line' => $line, 'column' => $column];
        }
        return $places;
    }
}
