<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class BlankBeforeKeyword implements DocumentRule
{
    private const TAG = '~\{[ \t\r\n]+(?:(?:include|!?optional|r?dynamic|addslashes|html(?:entities|specialchars)|rawurlencode)'
        . '[ \t]+(?:[^\s{}:;,()=<>"]|::)+(?:[,\t ](?:[^\s{}:;()=<>"]|::)+)?|/(?:optional|r?dynamic))[ \t]*\}~';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'blank-before-keyword',
                summary: 'a blank between a brace and a keyword',
                why: <<<'TEXT'
                    A "{" before a blank, a tab or a line break is text, so that style sheets and scripts need little
                    care. What looks like a tag behind it is printed as it stands.
                    TEXT,
                bad: '{ include footer.tpl }',
                good: '<script>var a = { include: 1 };</script>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        preg_match_all(self::TAG, $document->source->text, $matches, PREG_OFFSET_CAPTURE);
        foreach ($matches[0] as [$written, $offset]) {
            $right = '{' . trim($written, "{} \t\r\n") . '}';
            $message = "a brace before a blank is text, and so is all of this: write \"$right\"";
            yield new Problem('blank-before-keyword', $message, $offset, strlen($written));
        }
    }
}
