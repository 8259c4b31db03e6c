<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Files\Files;
use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

/** Includes of which the template's author doesn't decide what is read. */
final class IncludeFromData implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'include-from-data',
                summary: 'an include whose file name comes from the data',
                why: <<<'TEXT'
                    The value can name any file that PHP may open, also /etc/passwd or, where PHP allows it, an
                    address on the web. See to it that only your own code decides this value, and that it is one of
                    a fixed list.
                    TEXT,
                bad: '{include page::layout}',
                good: '{optional page::layout wide}<div class="wide">{/optional}',
                isSecurity: true,
            ),
            new Warning(
                name: 'include-by-wrapper',
                summary: "an include through one of PHP's stream wrappers",
                why: <<<'TEXT'
                    An include can read from "http://", "data:", "php://" and all other wrappers that PHP has. What
                    comes from there is a template: it can print all of the data and any file. Include files, and let
                    PHP fetch the rest.
                    TEXT,
                bad: '{include http://example.org/news.tpl}',
                good: '{optional}vouched: from our own server{/optional}{include http://example.org/news.tpl}',
                isSecurity: true,
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $number => $node) {
            $tag = $node->tag;
            if ($tag->kind !== Kind::Include || $tag->complaint !== null || Vouching::has($view, $number)) {
                continue;
            }
            [$name, $message] = match (true) {
                // A path that begins with "data" is none of the wrapper's: that one needs a comma.
                Files::isStream($tag->argument) && !str_starts_with($tag->argument, 'data::') => ['include-by-wrapper', 'what comes from there is read as a template,'
                    . ' which can print all of the data and any file that PHP may read'],
                $this->isFromData($view, $tag) => ['include-from-data', "the data decides which file is included:"
                    . " \"$tag->argument\" may name any file that PHP may read"],
                default => [null, ''],
            };
            if ($name !== null) {
                $offset = $node->offset + $tag->argumentOffset;
                $actions = Vouching::actions($node);
                yield new Problem($name, $message, $offset, strlen($tag->argument), actions: $actions);
            }
        }
    }

    private function isFromData(View $view, Tag $tag): bool
    {
        $name = $tag->includedName($view->data);
        if ($view->data !== null) {
            return $name !== $tag->argument || $tag->references[0]->find($view->data) === [$name];
        }
        // A name without a dot is hardly that of a file.
        return str_contains($name, '::') || (!str_contains($name, '.') && $view->find($name) === null);
    }
}
