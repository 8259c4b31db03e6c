<?php

namespace TemplateTool\Rules\Includes;

use TemplateTool\Files\Files;
use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;

final class MissingInclude implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'missing-include',
                summary: "an included file that doesn't exist",
                why: <<<'TEXT'
                    A file that can't be opened is left out in silence. Names are looked up in PHP's include path,
                    never beside the including template: --include-path says where to look. When the name is a key
                    of the data that holds the file's name, give sample data with --data.
                    TEXT,
                bad: '{include no-such-file.tpl}',
                good: '{include page::footer}',
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        foreach ($view->document->nodes as $node) {
            $tag = $node->tag;
            if ($tag->kind !== Kind::Include || $tag->complaint !== null || $node->isCut() || $view->isForeign($node)) {
                continue;
            }
            $name = $tag->includedName($view->data);
            // A path into the data: what it holds isn't known here, or where the sample data doesn't lead.
            $isUnknown = str_contains($name, '::') && ($view->data === null || !$view->isReached($node));
            $isFound = isset($view->context->names[$name]) || $view->find($name) !== null;
            if ($name !== '' && !$isUnknown && !$isFound && !Files::isStream($name)) {
                $message = "there is no file \"$name\" in the include path, so nothing is included";
                $offset = $node->offset + $tag->argumentOffset;
                $notes = $this->notes($view, $name);
                yield new Problem('missing-include', $message, $offset, strlen($tag->argument), $notes);
            }
        }
    }

    /** @return list<string> */
    private function notes(View $view, string $name): array
    {
        $source = $view->document->source;
        $beside = dirname($source->name);
        return $source->path !== '' && is_file("$beside/$name")
            ? ["it lies beside this template, where it isn't looked for without --include-path $beside"]
            : [];
    }
}
