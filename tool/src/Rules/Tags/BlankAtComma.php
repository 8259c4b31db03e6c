<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class BlankAtComma implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'blank-at-comma',
                summary: 'a blank beside the comma of a loop',
                why: <<<'TEXT'
                    Between the name of a loop and its reference stands a comma and nothing else. A blank behind it
                    belongs to the reference, which then finds nothing; a blank in front of it belongs to the name.
                    TEXT,
                bad: '{dynamic row, rows}{row::*}{/dynamic}',
                good: '{dynamic row,rows}{row::*}{/dynamic}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        $parts = '/^([^,]*?)(\s*),(\s*)/';
        if (!$tag->kind->isLoop() || !preg_match($parts, $tag->argument, $match, PREG_OFFSET_CAPTURE)) {
            return;
        }
        foreach ([2 => 'name', 3 => 'reference'] as $side => $owner) {
            [$blanks, $offset] = $match[$side];
            if ($blanks !== '') {
                $effect = $owner === 'name'
                    ? "\"{$match[1][0]}::*\" doesn't reach this loop"
                    : 'the loop finds nothing';
                $message = "this blank belongs to the $owner: $effect";
                $offset += $tag->argumentOffset;
                $edits = [new Edit($offset, strlen($blanks), '')];
                yield new Problem('blank-at-comma', $message, $offset, strlen($blanks), edits: $edits);
            }
        }
    }
}
