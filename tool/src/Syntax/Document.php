<?php

namespace TemplateTool\Syntax;

/** A template cut into tags and nested, with all that the engine says against it wherever it is used. */
final class Document
{
    // A tag as the engine's reader finds it: "{{" and a brace before a blank or at the end are text, and a tag ends at
    // the first closing brace. At a brace inside a tag this cut begins anew, so that the rest is looked at as well.
    private const TAG = '~(?:\{\{|\{(?=[ \t\n\r]|\z))(*SKIP)(*FAIL)|\{[^{}]*+(?:\}|(?=\{)|\z)~';

    /** From this depth on the engine is asked whether it can nest so deeply. */
    private const DEEP = 500;

    /** @var list<Node> in the order of the text; closing tags are no nodes */
    public array $nodes = [];

    /** @var list<Tag> all tags in the order of the text, closing ones too */
    public array $tags = [];

    /** @var list<int> where each of them begins */
    public array $offsets = [];

    public readonly CodeRanges $code;

    /** @var list<Problem> what the engine says against it */
    public array $problems = [];

    /** @var list<int> the numbers of the blocks that are open */
    private array $open = [];

    /** @var array<string, int> how many open blocks wait for each closing tag */
    private array $awaited = [];

    /** @var array<string, int> how many blocks a wrong closing tag has left behind */
    private array $left = [];

    /** @var array<string, list<int>> by name: the loops of this name that are open */
    private array $named = [];

    /** Whether a brace inside a tag has made all that follows part of that tag: the engine finds no errors there. */
    private bool $isLost = false;

    public function __construct(public readonly Source $source, private Engine $engine, private TagReader $reader)
    {
        $this->code = new CodeRanges($source->text);
        $deepest = null;
        $text = $source->text;
        for ($offset = 0; preg_match(self::TAG, $text, $match, PREG_OFFSET_CAPTURE, $offset);) {
            [$written, $start] = $match[0];
            $offset = $start + strlen($written);
            if ($offset < strlen($text) && $text[$offset - 1] !== '}') {
                $written .= '{';
            }
            $tag = $reader->read($written);
            $this->tags[] = $tag;
            $this->offsets[] = $start;
            $node = $tag->kind->isEnd() ? $this->close($tag, $start) : $this->add($tag, $start);
            if ($tag->swallows) {
                $this->open && $this->reportUnclosed(end($this->open));
                $this->isLost = true;
            }
            $deepest = $node?->depth > ($deepest->depth ?? 0) ? $node : $deepest;
        }
        while ($this->open && !$this->isLost) {
            $this->reportUnclosed($this->leave());
        }
        if ($deepest && $deepest->depth >= self::DEEP && !$this->isLost) {
            $this->checkDepth($deepest);
        }
    }

    /** The blocks around a node, innermost first. @return \Generator<int, Node> */
    public function around(Node $node): \Generator
    {
        for ($i = $node->parent; $i >= 0; $i = $this->nodes[$i]->parent) {
            yield $i => $this->nodes[$i];
        }
    }

    /** The loops around a node, innermost first. @return \Generator<int, Node> */
    public function loopsAround(Node $node): \Generator
    {
        for ($i = $node->loop; $i >= 0; $i = $this->nodes[$i]->loop) {
            yield $i => $this->nodes[$i];
        }
    }

    /** "line 3, column 7" */
    public function place(int $offset): string
    {
        return vsprintf('line %d, column %d', $this->source->position($offset));
    }

    private function add(Tag $tag, int $offset): Node
    {
        $parent = $this->open ? end($this->open) : -1;
        $around = $parent >= 0 ? $this->nodes[$parent] : null;
        $loop = $around?->tag->kind->isLoop() ? $parent : ($around->loop ?? -1);
        $node = new Node($tag, $offset, $parent, $loop, $around ? $around->depth + 1 : 0, $this->isLost);
        $this->nodes[] = $node;
        foreach ($this->named ? $tag->references : [] as $reference) {
            if (!empty($this->named[$reference->namespace])) {
                $node->loops[$reference->namespace] = end($this->named[$reference->namespace]);
            }
        }

        // A block that no closing tag can follow is reported by reportUnclosed.
        $isBlock = $tag->kind->end() !== null;
        $complaint = $tag->complaint;
        if ($isBlock && ($tag->swallows || $tag->isCutOff) && $this->isUnclosed($complaint)) {
            $complaint = null;
        }
        [$nameComplaint, $notes] = $this->nameComplaint($node);
        $complaint = $nameComplaint ?? $complaint;
        if ($complaint !== null) {
            $this->report($complaint, $offset, strlen($tag->source) - (int) $tag->swallows, $notes);
        }
        if ($isBlock) {
            $this->open[] = count($this->nodes) - 1;
            if ($tag->name !== '') {
                $this->named[$tag->name][] = count($this->nodes) - 1;
            }
            $end = $tag->kind->end()->value;
            $this->awaited[$end] = ($this->awaited[$end] ?? 0) + 1;
        }
        return $node;
    }

    /** @return array{?string, list<string>} what the engine says against a loop's name in the loops around it; notes */
    private function nameComplaint(Node $node): array
    {
        if (!empty($this->named[$node->tag->name])) {
            $outer = $this->nodes[end($this->named[$node->tag->name])];
            $block = $node->tag->source . '{' . $node->tag->kind->end()->value . '}';
            $question = '{dynamic ' . $outer->tag->name . ",x}$block{/dynamic}";
            $notes = ["the loop around it at {$this->place($outer->offset)} bears the same name"];
            return [$this->engine->complaint($question, ['x' => []]), $notes];
        }
        return [null, []];
    }

    /** @return null a closing tag is no node */
    private function close(Tag $tag, int $offset): null
    {
        $innermost = $this->open ? $this->nodes[end($this->open)] : null;
        $complaint = $this->reader->endComplaint($tag, $innermost?->tag->kind);
        if ($complaint !== null && !empty($this->left[$tag->kind->value]) && empty($this->awaited[$tag->kind->value])) {
            // Two blocks overlap: that is one mistake, and is reported already.
            $this->left[$tag->kind->value]--;
            return null;
        }
        if ($complaint !== null) {
            $notes = [];
            if ($innermost) {
                $notes[] = "{$innermost->tag->source} is still open, from {$this->place($innermost->offset)}";
            }
            $this->report($complaint, $offset, strlen($tag->source) - (int) $tag->swallows, $notes);
            if (!$this->leaveUpTo($tag->kind)) {
                return null;
            }
        }
        $node = $this->nodes[$this->leave()];
        $node->endOffset = $offset;
        $node->end = $offset + strlen($tag->source) - (int) $tag->swallows;
        return null;
    }

    /** After a wrong closing tag: finds the block that was meant, and leaves those inside it. */
    private function leaveUpTo(Kind $end): bool
    {
        // The innermost loop may be closed by the tag of the other direction.
        $innermost = $this->open ? $this->nodes[end($this->open)]->tag->kind : null;
        if ($innermost?->isLoop() && $end !== Kind::OptionalEnd) {
            return true;
        }
        if (empty($this->awaited[$end->value])) {
            return false;
        }
        while (($other = $this->nodes[end($this->open)]->tag->kind->end()) !== $end) {
            $this->left[$other->value] = ($this->left[$other->value] ?? 0) + 1;
            $this->leave();
        }
        return true;
    }

    /** Leaves the innermost open block; returns its number. */
    private function leave(): int
    {
        $number = array_pop($this->open);
        $tag = $this->nodes[$number]->tag;
        $this->awaited[$tag->kind->end()->value]--;
        if ($tag->name !== '') {
            array_pop($this->named[$tag->name]);
        }
        return $number;
    }

    private function reportUnclosed(int $number): void
    {
        $node = $this->nodes[$number];
        $complaint = $this->engine->complaint('{' . $node->tag->kind->value . ' x}');
        $this->report($complaint, $node->offset, strlen($node->tag->source) - (int) $node->tag->swallows);
    }

    private function isUnclosed(?string $complaint): bool
    {
        return $complaint === $this->engine->complaint('{optional x}');
    }

    private function checkDepth(Node $deepest): void
    {
        $complaint = $this->engine->complaint(str_repeat('{optional x}', $deepest->depth + 1));
        if ($complaint !== null && !$this->isUnclosed($complaint)) {
            $this->report($complaint, $deepest->offset, strlen($deepest->tag->source));
        }
    }

    private function report(string $message, int $offset, int $length, array $notes = []): void
    {
        $this->isLost || $this->problems[] = new Problem(null, $message, $offset, $length, $notes);
    }
}
