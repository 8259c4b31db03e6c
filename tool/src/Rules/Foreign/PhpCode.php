<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class PhpCode implements DocumentRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'php-code',
                summary: 'PHP code in a template',
                why: <<<'TEXT'
                    A template is no PHP file: the code isn't run, but printed, where every visitor can read it. Make
                    the value in PHP, hand it over, and print it with a tag.
                    TEXT,
                bad: '<p><?= $name ?></p>',
                good: '<?xml version="1.0"?><p>{htmlspecialchars name}</p>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        $text = $document->source->text;
        for ($offset = 0; preg_match('~<\?(?:php\b|=)~i', $text, $match, PREG_OFFSET_CAPTURE, $offset);) {
            $start = $match[0][1];
            $end = strpos($text, '?>', $start);
            $offset = $end === false ? strlen($text) : $end + 2;
            $message = 'PHP code isn\'t run in a template: it is printed as it stands';
            yield new Problem('php-code', $message, $start, strlen($match[0][0]));
        }
    }
}
