<?php

namespace TemplateTool\Rules\Includes;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;

final class StrayMark implements ViewRule
{
    private const MARK = "\u{FEFF}";

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'byte-order-mark',
                summary: 'a byte order mark in the middle of a page',
                why: <<<'TEXT'
                    Some editors begin a file with an invisible mark. In an included file, or where files were joined,
                    it ends up in the middle of the page and can show as a gap. Save the file as UTF-8 without byte
                    order mark.
                    TEXT,
                bad: "<p>\u{FEFF}{name}</p>",
                good: '<p>{name}</p>',
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        $text = $view->document->source->text;
        for ($offset = -1; ($offset = strpos($text, self::MARK, $offset + 1)) !== false;) {
            if ($offset > 0 || $view->context->isIncluded()) {
                $message = 'an invisible byte order mark: here it is in the middle of the page';
                yield new Problem('byte-order-mark', $message, $offset, strlen(self::MARK));
            }
        }
    }
}
