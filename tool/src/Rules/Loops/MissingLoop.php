<?php

namespace TemplateTool\Rules\Loops;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;

/** Reports each loop that isn't there once, with all the lines that refer to it. */
final class MissingLoop implements ViewRule
{
    private const MOST_LINES = 12;

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'outside-loop',
                summary: 'a reference with a star, or to a key, outside of every loop',
                why: <<<'TEXT'
                    "*" is the element and "[*]" the key of the loop around the tag. Where there is none, such a
                    reference finds nothing. Loops around an include tag count for the included file: check the
                    template that includes it, or the whole folder.
                    TEXT,
                bad: '{htmlspecialchars *::title}{dynamic rows}{*::title}{/dynamic}',
                good: '{dynamic rows}{htmlspecialchars *::title}{/dynamic}',
            ),
            new Warning(
                name: 'unknown-loop',
                summary: "a reference to a loop that isn't there",
                why: <<<'TEXT'
                    In "row::*::title" the word in front of the star is the name of a loop around the tag, as in
                    {dynamic row,rows}. It isn't the name of the list. Loops around an include tag count for the
                    included file: check the template that includes it, or the whole folder.
                    TEXT,
                bad: '{dynamic row,rows}{rows::*::title}{/dynamic}',
                good: '{dynamic row,rows}{row::*::title}{/dynamic}',
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        $missing = [];
        foreach ($view->document->nodes as $node) {
            $isRead = $node->tag->complaint === null && !$view->isForeign($node);
            foreach ($isRead ? $node->tag->references : [] as $reference) {
                if (!$reference->isPath() && !$view->context->hasLoop($node, $reference->namespace)) {
                    $missing[$reference->namespace][] = [$reference, $node->offset + $reference->offset];
                }
            }
        }
        foreach ($missing as $name => $places) {
            [[$reference, $offset]] = $places;
            $isOutside = (string) $name === '';
            yield new Problem(
                $isOutside ? 'outside-loop' : 'unknown-loop',
                $isOutside
                    ? "\"$reference->text\" stands outside of every loop, so it finds nothing"
                    : "\"$reference->text\" finds nothing: no loop around it is named \"$name\"",
                $offset,
                strlen($reference->text),
                $this->notes($view, array_slice($places, 1))
            );
        }
    }

    /** @return list<string> */
    private function notes(View $view, array $more): array
    {
        $lines = [];
        foreach ($more as [, $offset]) {
            $lines[$view->document->source->position($offset)[0]] = true;
        }
        $shown = implode(', ', array_slice(array_keys($lines), 0, self::MOST_LINES));
        $notes = [];
        if ($more) {
            $count = count($more) === 1 ? 'so does one more reference' : 'so do ' . count($more) . ' more references';
            $notes[] = "$count, in line" . (count($lines) === 1 ? '' : 's') . " $shown"
                . (count($lines) > self::MOST_LINES ? ' and further down' : '');
        }
        if (!$view->context->isIncluded()) {
            $notes[] = 'if this template is included inside such a loop, check the one that includes it, or the folder';
        }
        return $notes;
    }
}
