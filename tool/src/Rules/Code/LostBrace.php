<?php

namespace TemplateTool\Rules\Code;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class LostBrace implements DocumentRule
{
    // Tags, doubled braces, braces before a blank, closing braces.
    private const BRACE = '~\{\{|\{(?=[ \t\n\r])|\{[^{}]*+\}?|\}\}?~';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'lost-brace',
                summary: 'two closing braces in a script or style sheet that print only one',
                why: <<<'TEXT'
                    "}}" prints one brace. Where it shall close two blocks, one of which was opened by a single "{"
                    before a blank, a brace is missing in the page. Put a blank between the two.
                    TEXT,
                bad: '<script>if (a) { if (b) { go() }}</script>',
                good: '<script>if (a) { if (b) { go() } } if (c) {{go()}}</script>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        foreach ($document->code->ranges as [$start, $end]) {
            yield from $this->inCode(substr($document->source->text, $start, $end - $start), $start);
        }
    }

    /** @return list<Problem> */
    private function inCode(string $code, int $start): array
    {
        // What is printed: as long as it is balanced, the author may have meant it so.
        $balance = 0;
        $open = [];
        $suspects = [];
        preg_match_all(self::BRACE, $code, $matches, PREG_OFFSET_CAPTURE);
        foreach ($matches[0] as [$brace, $offset]) {
            if ($brace === '{' || $brace === '{{') {
                $balance++;
                $open[] = $brace;
            } elseif ($brace[0] === '}') {
                $balance--;
                $innermost = array_pop($open);
                if ($brace === '}}' && $innermost === '{' && end($open) === '{') {
                    array_pop($open);
                    $suspects[] = $offset;
                }
            }
        }
        $message = 'this prints one brace only, and a block of this script or style sheet stays open: put a blank between';
        return $balance < count($suspects) || !$suspects ? [] : array_map(
            static fn(int $offset): Problem => new Problem('lost-brace', $message, $start + $offset, 2),
            $suspects
        );
    }
}
