<?php

namespace TemplateTool\Rules;

use TemplateTool\Files\Files;
use TemplateTool\Rules\Data\Reach;
use TemplateTool\Rules\Data\Sample;
use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Reference;

/** A document as it is reached by one chain of includes, and with what it is meant for. */
final class View
{
    /**
     * $data: null when nothing is known of it. $vouched: as in Options. $open: the document of a path; null when it
     * can't be read.
     *
     * $isForeign: as RuleSet knows it.
     *
     * @param list<string> $vouched
     * @param \Closure(string): ?Document $open
     * @param \Closure(Document, Node): bool $isForeign
     */
    public function __construct(
        public readonly Document $document,
        public readonly Context $context,
        public readonly Engine $engine,
        public readonly ?array $data,
        public readonly array $vouched,
        private ?Sample $sample,
        private Files $files,
        private \Closure $open,
        private \Closure $isForeign,
    ) {
    }

    /** The file that an include tag leads to, as it is reached from here; null when there is none, or in a circle. */
    public function included(Node $node): ?self
    {
        $name = $node->tag->includedName($this->data);
        $path = isset($this->context->names[$name]) ? null : $this->find($name);
        $document = $path !== null && is_file($path) ? ($this->open)($path) : null;
        if (!$document) {
            return null;
        }
        $context = $this->context->through($this->document, $node, $name, $this->data !== null);
        return new self(
            $document,
            $context,
            $this->engine,
            $this->data,
            $this->vouched,
            $this->sample,
            $this->files,
            $this->open,
            $this->isForeign
        );
    }

    /** The path under which an include of this name opens a file or a folder; null when there is none. */
    public function find(string $name): ?string
    {
        return $this->files->find($name, $this->context->page);
    }

    /** Whether a tag has been explained as one of another language. */
    public function isForeign(Node $node): bool
    {
        return ($this->isForeign)($this->document, $node);
    }

    /** What the sample data makes of the place where a tag stands; null when there is none. */
    public function reach(Node $node): ?Reach
    {
        return $this->sample?->reach($this->context, $this->document, $node->parent);
    }

    /**
     * Whether the sample data has a value for one of these where a tag stands, or that place is never reached.
     *
     * @param list<Reference> $references
     */
    public function hasOneOf(Node $node, array $references): bool
    {
        $reach = $this->reach($node);
        foreach ($reach->isReached() ? $references : [] as $reference) {
            if ($reach->values($reference)[1]) {
                return true;
            }
        }
        return !$reach->isReached();
    }

    /** Whether the sample data leads to the place of a tag. */
    public function isReached(Node $node): bool
    {
        return $this->reach($node)?->isReached() ?? false;
    }

    /** Whether a plain tag prints nothing but numbers, as far as the sample data goes. */
    public function printsNumbers(Node $node): bool
    {
        $reach = $this->reach($node);
        if (!$reach?->isReached()) {
            return false;
        }
        $isFound = false;
        foreach ($node->tag->references as $reference) {
            [$missing, $values] = $reach->values($reference);
            foreach ($values as $value) {
                if (!is_numeric($value)) {
                    return false;
                }
                $isFound = true;
            }
            if ($missing === 0) {
                break;
            }
        }
        return $isFound;
    }
}
