<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\Code\Pasted;
use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class BraceInTag implements DocumentRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'brace-in-tag',
                summary: 'a "{" inside a tag',
                why: <<<'TEXT'
                    A "{" inside a tag swallows all that follows it, up to the end of the file. Most often the "}"
                    of the tag is missing, or a brace of CSS or JavaScript is not written twice: "template literal"
                    turns a style sheet or a script into a template that prints it.
                    TEXT,
                bad: '<b>{name</b> <i>{city}</i>',
                good: '<b>{name}</b> <i>{city}</i> <style>b{{color:red}} i { color: blue }</style>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        foreach ($document->tags as $i => $tag) {
            if (!$tag->swallows) {
                continue;
            }
            $start = $document->offsets[$i];
            $length = strlen($tag->source) - 1;
            if (Pasted::isAt($document, $start)) {
                // A style sheet has as many of these as it has rules in rules, and they mean all the same.
                $message = 'this brace stands inside of another one and swallows the rest of the template: '
                    . Pasted::ADVICE;
                yield new Problem('brace-in-tag', $message, $start + $length, 1);
                return;
            }
            $message = 'this tag isn\'t closed before the next "{", which swallows the rest of the template';
            $note = "the \"{\" is at {$document->place($start + $length)}";
            yield new Problem('brace-in-tag', $message, $start, $length, [$note]);
        }
    }
}
