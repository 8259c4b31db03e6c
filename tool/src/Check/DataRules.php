<?php

namespace TemplateTool\Check;

/** The warnings that need sample data. What a loop's elements hold is asked of the engine. */
final class DataRules
{
    private const BEGIN = "\x02begin\x02";
    private const NOTHING = "\x02nothing\x02";
    private const END = "\x02end\x02";

    public function __construct(private Engine $engine, private array $data)
    {
    }

    /** @return list<Problem> */
    public function problems(Document $document, Node $node, Context $context): array
    {
        $tag = $node->tag;
        // Sections ask whether a value exists; a fallback text says what to do when it doesn't.
        $isValue = ($tag->kind === Kind::Plain && $tag->references) || $tag->kind->isEscaping();
        if ((!$isValue && !$tag->kind->isLoop()) || $tag->swallows || $this->hasBlank($tag)) {
            return [];
        }
        $blocks = $context->blocks($document, $node);
        [$runs, $found, $arrays] = $this->probe($blocks, array_column($tag->references, 'text'));
        if ($runs === 0) {
            return [];
        }
        $rule = match (true) {
            $tag->kind->isLoop() => 'loop',
            $tag->kind === Kind::Plain => 'plain',
            default => 'escaped',
        };
        $problem = $this->$rule($tag, $blocks, $found, $arrays);
        $start = $tag->references[0]->offset;
        $last = end($tag->references);
        $length = $last->offset + strlen($last->text) - $start;
        return $problem ? [new Problem($problem[0], $problem[1], $node->offset + $start, $length)] : [];
    }

    /** @return ?array{string, string} name and message */
    private function plain(Tag $tag, array $blocks, int $found, int $arrays): ?array
    {
        if ($found === 0 && $tag->fallback === null) {
            $what = count($tag->references) > 1 ? 'none of these finds anything' : 'this finds nothing';
            return ['missing-value', "$what in the data, so the tag is printed as it stands"];
        }
        return $arrays > 0 ? ['array-as-text', 'this is an array, and prints the word "Array"'] : null;
    }

    private function escaped(Tag $tag, array $blocks, int $found, int $arrays): ?array
    {
        if ($found === 0) {
            return ['missing-value', 'this finds nothing in the data, so nothing is printed'];
        }
        $value = $tag->references[0]->isPath() ? $tag->references[0]->find($this->data) : null;
        if ($value && !is_string($value[0])) {
            $type = get_debug_type($value[0]);
            $message = "nothing is printed: this is of type $type, and \"{$tag->kind->value}\" prints only strings here";
            return ['unprinted-value', $message];
        }
        return $arrays > 0 ? ['array-as-text', 'this is an array, and prints the word "Array"'] : null;
    }

    private function loop(Tag $tag, array $blocks, int $found, int $arrays): ?array
    {
        if ($found === 0) {
            return ['missing-value', 'this finds nothing in the data, so the loop prints nothing'];
        }
        if ($arrays === 0) {
            return ['loop-over-no-array', 'this is no array, so the loop prints nothing'];
        }
        [, $found, $arrays] = $this->probe($blocks, [$tag->references[0]->text . '::num']);
        return $found > 0 && $arrays === 0
            ? ['loop-over-no-array', 'the element "num" of this array is no array, so the loop prints nothing']
            : null;
    }

    /** Whether a plain tag prints nothing but numbers, as far as the sample data goes. */
    public function printsNumbers(Document $document, Node $node, Context $context): bool
    {
        $references = array_column($node->tag->references, 'text');
        [, $found, , $texts] = $this->probe($context->blocks($document, $node), $references);
        return $found > 0 && array_filter($texts, static fn(string $text): bool => !is_numeric($text)) === [];
    }

    private function hasBlank(Tag $tag): bool
    {
        return $tag->kind !== Kind::Plain && preg_match("/[\\s']/", $tag->references[0]->text);
    }

    /**
     * Renders a plain tag with these references where the tag stands.
     *
     * @param list<string> $references
     * @return array{int, int, int, list<string>} how often the place is reached, how often a value is found there, how
     *     often that is an array, and the values as text
     */
    private function probe(array $blocks, array $references): array
    {
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
