<?php

namespace TemplateTool\Rules;

use TemplateTool\Files\Files;
use TemplateTool\Syntax\Context;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Reference;

/** A document as it is reached by one chain of includes, and with what it is meant for. */
final class View
{
    private const BEGIN = "\x02begin\x02";
    private const NOTHING = "\x02nothing\x02";
    private const END = "\x02end\x02";

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

    /**
     * Whether the sample data has a value for one of these where a tag stands.
     *
     * @param list<Reference> $references
     */
    public function hasOneOf(Node $node, array $references): bool
    {
        return $this->probe($node, array_column($references, 'text'))[1] > 0;
    }

    /** Whether the sample data leads to the place of a tag. */
    public function isReached(Node $node): bool
    {
        return $this->probe($node, [])[0] > 0;
    }

    /** Whether a plain tag prints nothing but numbers, as far as the sample data goes. */
    public function printsNumbers(Node $node): bool
    {
        if ($this->data === null) {
            return false;
        }
        [, $found, , $texts] = $this->probe($node, array_column($node->tag->references, 'text'));
        return $found > 0 && array_filter($texts, static fn(string $text): bool => !is_numeric($text)) === [];
    }

    /**
     * Renders a plain tag with these references where a tag stands.
     *
     * @param list<string> $references
     * @return array{int, int, int, list<string>} how often the place is reached, how often a value is found there, how
     *     often that is an array, and the values as text
     */
    public function probe(Node $node, array $references): array
    {
        $blocks = $this->context->blocks($this->document, $node);
        // With a vertical tab in front, no keyword is seen in the first reference.
        $tag = "{\v" . implode(' ', $references) . " '" . self::NOTHING . "'}";
        $question = $blocks[0] . self::BEGIN . $tag . self::END . $blocks[1];
        [$text, $messages] = $this->engine->render($question, $this->data);
        preg_match_all('~' . self::BEGIN . '(.*?)' . self::END . '~s', $text ?? '', $matches);
        $texts = array_values(array_diff($matches[1], [self::NOTHING]));
        $arrays = count(array_keys($messages, 'Array to string conversion'));
        return [count($matches[1]), count($texts), $arrays, $texts];
    }
}
