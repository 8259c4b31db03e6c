<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Problem;

final class AtDirective implements DocumentRule
{
    private const DIRECTIVE = '~(?<![\w@.])@(?:(?:if|elseif|foreach|for|forelse|while|unless|isset|switch|include|extends|section|yield)'
        . '[ \t]*\(|(?:else|endif|endforeach|endfor|endforelse|endwhile|endunless|endisset|endsection|csrf)\b)~';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'at-directive',
                summary: 'a directive that begins with "@"',
                why: <<<'TEXT'
                    Tags stand in braces. A word with "@" is text, and is printed. Sections are
                    "{optional name}...{/optional}", loops "{dynamic row,rows}...{/dynamic}", files "{include name.tpl}".
                    TEXT,
                bad: '@if ($user) Hello',
                good: '{optional user}Hello{/optional} a@b.example <style>@media print { p { margin: 0 } }</style>',
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        preg_match_all(self::DIRECTIVE, $document->source->text, $matches, PREG_OFFSET_CAPTURE);
        foreach ($matches[0] as [$written, $offset]) {
            if (!$document->code->has($offset)) {
                $message = 'this is text here, and is printed: tags stand in braces';
                yield new Problem('at-directive', $message, $offset, strlen(rtrim($written, "( \t")));
            }
        }
    }
}
