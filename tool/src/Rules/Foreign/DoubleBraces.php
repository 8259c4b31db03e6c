<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class DoubleBraces implements DocumentRule
{
    // Behind a letter, a bracket or a sign they are braces of a style sheet, a regular expression, a formula.
    private const TAG = '~(?<![\w{})\]\\\\$#^_@/])(?:'
        . '\{\{\s*(?<path>\$?[a-z_]\w+(?:(?:\.|->)\w+|\[[^]{}]*\])*(?:\s*\|[\s\w|:(),\'"-]*)?)\s*\}\}'
        . '|\{\{\{\s*(?<raw>\$?[a-z_]\w+(?:\.\w+)*)\s*\}\}\}'
        . '|\{\{\s*(?:[#^]\s*[a-z_][^{}]*|(?!/(?:optional|r?dynamic))[/>]\s*[a-z_][^{}\n]*|else|--[^{}]*--|![^{}]*)\}\}'
        . ')(?!\})~i';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'double-braces',
                summary: 'a name in double braces',
                why: <<<'TEXT'
                    A tag stands in single braces. Double ones print one brace each, so "{{name}}" prints "{name}" and
                    no value. Where double braces shall reach the browser, for a script there, write each of them twice.
                    TEXT,
                bad: '<p>{{ name }}</p>',
                good: '<p>{htmlspecialchars name}</p> <p>{{{{ name }}}}</p>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        preg_match_all(self::TAG, $document->source->text, $matches, PREG_SET_ORDER | PREG_OFFSET_CAPTURE);
        foreach ($matches as $match) {
            [$written, $offset] = $match[0];
            if (!$document->code->has($offset)) {
                $path = Words::translated($match['path'][0] ?? '');
                $raw = Words::translated($match['raw'][0] ?? '');
                $message = match (true) {
                    ($match['raw'][0] ?? '') !== '' => "this prints the value between two braces: write \"{{$raw}}\"",
                    ($match['path'][0] ?? '') !== '' => "double braces print single ones and no value: write"
                        . " \"{htmlspecialchars $path}\"",
                    default => 'double braces print single ones: this is no tag',
                };
                yield new Problem('double-braces', $message, $offset, strlen($written));
            }
        }
    }
}
