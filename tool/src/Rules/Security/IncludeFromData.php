<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

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
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $node) {
            $tag = $node->tag;
            if ($tag->kind === Kind::Include && $tag->complaint === null && $this->isFromData($view, $tag)) {
                $message = "the data decides which file is included: \"$tag->argument\" may name any file that PHP"
                    . ' may read';
                $offset = $node->offset + $tag->argumentOffset;
                yield new Problem('include-from-data', $message, $offset, strlen($tag->argument));
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
