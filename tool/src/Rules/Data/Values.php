<?php

namespace TemplateTool\Rules\Data;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

/** What the values of the sample data are at the places where tags print or walk them. */
final class Values implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'missing-value',
                summary: 'a reference that finds nothing in the sample data',
                why: <<<'TEXT'
                    The value isn't there in any round of the loops around the tag. A plain tag is then printed as
                    it stands, an escaping tag and a loop print nothing. When a value may be missing, give a plain
                    tag a text for that case, or put the tag into a section.
                    TEXT,
                bad: '{user::nmae}',
                good: "{user::name} {user::city 'somewhere'} {optional user::phone}{user::phone}{/optional}",
                data: ['user' => ['name' => 'Ann']],
            ),
            new Warning(
                name: 'loop-over-no-array',
                summary: 'a loop over something else than an array, given the sample data',
                why: <<<'TEXT'
                    Only arrays are walked; over anything else a loop prints nothing. When the array has an element
                    "num", the loop walks that one, so it has to be an array too.
                    TEXT,
                bad: '{dynamic count}{*}{/dynamic}',
                good: '{dynamic rows}{*}{/dynamic}',
                data: ['rows' => ['a', 'b'], 'count' => 2],
            ),
            new Warning(
                name: 'array-as-text',
                summary: 'an array that is printed, given the sample data',
                why: <<<'TEXT'
                    An array prints the word "Array", and PHP raises a warning of its own. Name the element that is
                    meant, or walk the array with a loop.
                    TEXT,
                bad: '{user}',
                good: '{user::name}',
                data: ['user' => ['name' => 'Ann']],
            ),
            new Warning(
                name: 'unprinted-value',
                summary: 'an escaping tag that prints nothing because the value is no string, given the sample data',
                why: <<<'TEXT'
                    When a reference isn't about a loop, the escaping tags print strings only; a number, true or an
                    array gives nothing. A number needs no escaping: use a plain tag.
                    TEXT,
                bad: '{htmlspecialchars stock}',
                good: '{stock}',
                data: ['stock' => 3],
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $node) {
            if ($node->tag->complaint === null && !$node->isCut() && !$view->isForeign($node)) {
                yield from $this->atNode($view, $node);
            }
        }
    }

    /** @return list<Problem> */
    private function atNode(View $view, Node $node): array
    {
        $tag = $node->tag;
        // Sections ask whether a value exists; a fallback text says what to do when it doesn't.
        $isValue = ($tag->kind === Kind::Plain && $tag->references) || $tag->kind->isEscaping();
        $reach = $isValue || $tag->kind->isLoop() ? $view->reach($node) : null;
        if (!$reach?->isReached() || $this->hasBlank($tag) || MissingStar::meant($view, $node) !== null) {
            return [];
        }
        $values = [];
        foreach ($tag->references as $reference) {
            [$missing, $found] = $reach->values($reference);
            array_push($values, ...$found);
            if ($missing === 0) {
                break;
            }
        }
        $problem = match (true) {
            $tag->kind->isLoop() => $this->loop($values),
            $tag->kind === Kind::Plain => $this->plain($tag, $values),
            default => $this->escaped($tag, $values),
        };
        $start = $tag->references[0]->offset;
        $last = end($tag->references);
        $length = $last->offset + strlen($last->text) - $start;
        return $problem ? [new Problem($problem[0], $problem[1], $node->offset + $start, $length)] : [];
    }

    /** @return ?array{string, string} name and message */
    private function plain(Tag $tag, array $values): ?array
    {
        if (!$values && $tag->fallback === null) {
            $what = count($tag->references) > 1 ? 'none of these finds anything' : 'this finds nothing';
            return ['missing-value', "$what in the data, so the tag is printed as it stands"];
        }
        return $this->text($values);
    }

    private function escaped(Tag $tag, array $values): ?array
    {
        if (!$values) {
            return ['missing-value', 'this finds nothing in the data, so nothing is printed'];
        }
        if ($tag->references[0]->isPath() && !is_string($values[0])) {
            $type = get_debug_type($values[0]);
            $keyword = $tag->kind->value;
            $message = "nothing is printed: this is of type $type, and \"$keyword\" prints only strings here";
            return ['unprinted-value', $message];
        }
        return $this->text($values);
    }

    private function text(array $values): ?array
    {
        $arrays = array_filter($values, is_array(...));
        return $arrays ? ['array-as-text', 'this is an array, and prints the word "Array"'] : null;
    }

    private function loop(array $values): ?array
    {
        $arrays = array_filter($values, is_array(...));
        return match (true) {
            !$values => ['missing-value', 'this finds nothing in the data, so the loop prints nothing'],
            !$arrays => ['loop-over-no-array', 'this is no array, so the loop prints nothing'],
            !array_filter($arrays, static fn(array $rows): bool => is_array($rows['num'] ?? $rows))
                => ['loop-over-no-array', 'the element "num" of this array is no array, so the loop prints nothing'],
            default => null,
        };
    }

    private function hasBlank(Tag $tag): bool
    {
        return $tag->kind !== Kind::Plain && preg_match("/[\\s']/", $tag->references[0]->text);
    }
}
