<?php

namespace TemplateTool\Syntax;

/** How a document is reached: through which include tags, and inside which blocks. */
final class Context
{
    /**
     * $page: the path of the template that the way begins with; empty when it is no file.
     * $names: of the files on the way, this one's included. $loops: the names of the loops around the include tags.
     * $open, $ends: the tags of all blocks around them, for questions to the engine.
     *
     * @param array<string, true> $names
     * @param array<string, true> $loops
     */
    private function __construct(
        public readonly string $page,
        public readonly array $names,
        public readonly array $loops = [],
        public readonly bool $inLoop = false,
        public readonly string $open = '',
        public readonly string $ends = '',
        private ?self $outer = null,
        private ?Source $source = null,
        private int $offset = 0,
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
        [$open, $ends] = $withBlocks ? $this->blocks($document, $include) : ['', ''];
        $inLoop = $this->inLoop || $include->loop >= 0;
        $names = $this->names + [$name => true];
        $source = $document->source;
        return new self($this->page, $names, $loops, $inLoop, $open, $ends, $this, $source, $include->offset);
    }

    /** Two contexts with the same key make the same difference to a document. */
    public function key(): string
    {
        $loops = array_keys($this->loops);
        sort($loops);
        return implode("\0", [dirname($this->page), (int) $this->inLoop, $this->open, ...$loops]);
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

    /** @return array{string, string} the opening tags of all blocks around a node, and their closing tags */
    public function blocks(Document $document, Node $node): array
    {
        $open = '';
        $ends = '';
        foreach ($document->around($node) as $block) {
            $open = $block->tag->source . $open;
            $ends .= '{' . $block->tag->kind->end()->value . '}';
        }
        return [$this->open . $open, $ends . $this->ends];
    }

    /** @return list<array{file: string, line: int, column: int}> the include tags on the way, innermost first */
    public function includedFrom(): array
    {
        $places = [];
        for ($context = $this; $context->outer; $context = $context->outer) {
            [$line, $column] = $context->source->position($context->offset);
            $places[] = ['file' => $context->source->name, 'line' => $line, 'column' => $column];
        }
        return $places;
    }
}
