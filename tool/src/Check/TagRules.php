<?php

namespace TemplateTool\Check;

/** The warnings that need to see one tag only. */
final class TagRules
{
    // What may follow a keyword without a blank and still be meant as its argument.
    private const ARGUMENT_STARTS = " \t\n\r\v\f*[,";

    /** @return list<array{string, string, int, int}> name, message, offset and length in the tag */
    public function remarks(Tag $tag): array
    {
        $remarks = [];
        foreach (['ending', 'keyword', 'misspelling', 'loop', 'references', 'comparison'] as $rule) {
            array_push($remarks, ...$this->$rule($tag));
        }
        return $remarks;
    }

    private function ending(Tag $tag): array
    {
        if ($tag->swallows) {
            $message = 'this tag isn\'t closed before the next "{", which swallows the rest of the template';
            return [['brace-in-tag', $message, 0, strlen($tag->source) - 1]];
        }
        return $tag->isCutOff ? [['cut-off-tag', 'the template ends inside this tag', 0, strlen($tag->source)]] : [];
    }

    private function keyword(Tag $tag): array
    {
        $keyword = $tag->kind->value;
        $behind = substr($tag->text, strlen($keyword), 1);
        if ($keyword === '' || $behind === '' || $behind === '{' || str_contains(self::ARGUMENT_STARTS, $behind)) {
            return [];
        }
        $word = strtok($tag->text, " \t\n\r\v\f");
        $message = $tag->kind->isEnd()
            ? "\"$word\" begins with \"$keyword\", so it closes a section"
            : "\"$word\" begins with a keyword, so this is the tag \"$keyword\" with the argument \"$tag->argument\"";
        return [['keyword-prefix', $message, 1, strlen($word)]];
    }

    private function misspelling(Tag $tag): array
    {
        if ($tag->kind !== Kind::Plain || !preg_match('~^[!/]?[a-z]{5,20}(?![^\s}])~i', $tag->argument, $match)) {
            return [];
        }
        [$word] = $match;
        $isEnd = $word[0] === '/';
        if (!$isEnd && $word === $tag->argument) {
            return [];
        }
        // "options" is a likely name and no slip; what begins with a slash is no likely name.
        $distance = $isEnd ? 3 : (strlen($word) < 10 ? 1 : 2);
        foreach (Kind::cases() as $kind) {
            $keyword = $kind->value;
            if ($keyword !== '' && $kind->isEnd() === $isEnd && levenshtein(strtolower($word), $keyword) <= $distance) {
                $message = "\"$word\" is no keyword, so this prints a value of that name; is \"$keyword\" meant?";
                return [['misspelt-keyword', $message, $tag->argumentOffset, strlen($word)]];
            }
        }
        return [];
    }

    private function loop(Tag $tag): array
    {
        $remarks = [];
        if ($tag->kind->isLoop() && preg_match('/^([^,]*?)(\s*),(\s*)/', $tag->argument, $match, PREG_OFFSET_CAPTURE)) {
            foreach ([2 => 'name', 3 => 'reference'] as $side => $owner) {
                [$blanks, $offset] = $match[$side];
                if ($blanks !== '') {
                    $effect = $owner === 'name' ? "\"{$match[1][0]}::*\" doesn't reach this loop" : 'the loop finds nothing';
                    $message = "this blank belongs to the $owner: $effect";
                    $remarks[] = ['blank-at-comma', $message, $tag->argumentOffset + $offset, strlen($blanks)];
                }
            }
        }
        return $remarks;
    }

    private function references(Tag $tag): array
    {
        $remarks = [];
        foreach ($tag->references as $reference) {
            if ($reference->beginsWithInteger()) {
                $message = "\"$reference->text\" finds nothing: at the top of the data no key can be an integer";
                $remarks[] = ['integer-index', $message, $reference->offset, strlen($reference->text)];
            }
            // Blanks at the front are those beside a comma.
            if (!$tag->kind->isEscaping() && !$tag->kind->isLoop()) {
                continue;
            }
            if (preg_match('/\S\s/', $reference->text)) {
                $what = $tag->kind->isLoop() ? 'a loop' : 'an escaping tag';
                $message = "$what takes one reference, nothing else: all of \"$reference->text\" is taken for a name";
                $remarks[] = ['blank-in-reference', $message, $reference->offset, strlen($reference->text)];
            }
        }
        return $remarks;
    }

    private function comparison(Tag $tag): array
    {
        if (!$tag->kind->isOptional() || !$tag->references) {
            return [];
        }
        $remarks = [];
        [$reference] = $tag->references;
        $start = $reference->offset + strlen($reference->text) + 1;
        if (preg_match('/\s/', $reference->text, $match, PREG_OFFSET_CAPTURE)) {
            $message = 'only a blank ends the reference here: a tab or a line break belongs to it';
            $remarks[] = ['blank-in-comparison', $message, $reference->offset + $match[0][1], 1];
        } elseif (str_starts_with($tag->compared, ' ')) {
            $length = strspn($tag->compared, ' ');
            $message = 'only one blank may stand here: the others belong to the value, which then equals no text';
            $remarks[] = ['blank-in-comparison', $message, $start, $length];
        }
        if ($reference->type === Reference::KEY && str_contains($tag->compared, "'")) {
            $message = 'keys are compared together with the quotes: leave them out';
            $remarks[] = ['quoted-key', $message, $start, strlen($tag->compared)];
        }
        return $remarks;
    }
}
