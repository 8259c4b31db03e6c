<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Reference;

/** What stands at a place of a template, as far as a tag goes: the smallest part of it that means something. */
final class Spot
{
    public const KEYWORD = 'keyword';
    public const END = 'closing tag';
    public const FILE = 'file';
    public const NAME = 'name of a loop';
    public const LOOP = 'name in front of a star';
    public const STAR = 'star';
    public const INDEX = 'index';
    public const OTHER = 'other';

    /**
     * $offset: in the document. $reference: the one that the part belongs to.
     * $index: which of the reference's indexes it is; -1 for other parts.
     */
    private function __construct(
        public readonly Document $document,
        public readonly Node $node,
        public readonly string $part,
        public readonly int $offset,
        public readonly int $length,
        public readonly ?Reference $reference = null,
        public readonly int $index = -1,
    ) {
    }

    /** What stands at an offset, or ends there; null for text outside of tags. */
    public static function at(Document $document, int $offset): ?self
    {
        $found = null;
        foreach ($document->nodes as $node) {
            if ($node->endOffset !== null && $offset > $node->endOffset && $offset < $node->end) {
                return new self($document, $node, self::END, $node->endOffset, $node->end - $node->endOffset);
            }
            if ($node->offset < $offset && $offset < self::endOf($node)) {
                $found = $node;
            }
        }
        return $found ? self::inTag($document, $found, $offset) : null;
    }

    /** Where the tag of a node ends; for a block, its opening tag. */
    public static function endOf(Node $node): int
    {
        return $node->offset + strlen($node->tag->source) - (int) $node->tag->swallows;
    }

    /** The parts of a node's tag that mean something, keyword excluded. @return \Generator<int, self> */
    public static function parts(Document $document, Node $node): \Generator
    {
        $tag = $node->tag;
        if ($tag->name !== '') {
            $length = strlen($tag->name);
            yield new self($document, $node, self::NAME, $node->offset + $tag->argumentOffset, $length);
        }
        foreach ($tag->references as $reference) {
            if ($tag->kind === Kind::Include) {
                $start = $node->offset + $reference->offset;
                yield new self($document, $node, self::FILE, $start, strlen($reference->text), $reference, 0);
            } else {
                yield from self::partsOf($document, $node, $reference);
            }
        }
    }

    private static function inTag(Document $document, Node $node, int $offset): self
    {
        foreach (self::parts($document, $node) as $part) {
            if ($offset >= $part->offset && $offset <= $part->offset + $part->length) {
                return $part;
            }
        }
        $keyword = strlen($node->tag->kind->value);
        return $offset <= $node->offset + 1 + $keyword && $keyword > 0
            ? new self($document, $node, self::KEYWORD, $node->offset + 1, $keyword)
            : new self($document, $node, self::OTHER, $node->offset, self::endOf($node) - $node->offset);
    }

    /** @return \Generator<int, self> */
    private static function partsOf(Document $document, Node $node, Reference $reference): \Generator
    {
        $parts = explode('::', $reference->text);
        $before = count($parts) - count($reference->indexes);
        $start = $node->offset + $reference->offset;
        foreach ($parts as $i => $text) {
            $part = match (true) {
                $i >= $before => self::INDEX,
                $i === $before - 1 => self::STAR,
                default => self::LOOP,
            };
            yield new self($document, $node, $part, $start, strlen($text), $reference, max(-1, $i - $before));
            $start += strlen($text) + 2;
        }
    }
}
