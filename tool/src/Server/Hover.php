<?php

namespace TemplateTool\Server;

use TemplateTool\Check\Finding;
use TemplateTool\Rules\Catalogue;

/** What is to be known about the place under the pointer. */
final class Hover
{
    private const MOST_VALUES = 3;

    public function __construct(private Workspace $workspace, private Diagnostics $diagnostics)
    {
    }

    public function hover(array $parameters): ?array
    {
        $place = $this->workspace->place($parameters);
        $spot = Spot::at($place->document, $place->offset);
        if ($spot === null) {
            return null;
        }
        $usages = new Usages($this->workspace, $place->folder);
        $parts = [match ($spot->part) {
            Spot::KEYWORD => Keywords::texts()[$spot->node->tag->kind->value] ?? '',
            Spot::END => $this->end($place, $spot),
            Spot::FILE => $this->file($place, $usages->targets($spot->document, $spot->node)),
            Spot::NAME, Spot::LOOP => $this->loops($usages, $spot),
            Spot::STAR, Spot::INDEX => $this->value($place, $usages, $spot),
            default => '',
        }];
        foreach ($this->diagnostics->now($place->path) as $finding) {
            $isHere = $finding->offset <= $place->offset && $place->offset <= $finding->offset + $finding->length;
            if ($isHere && $finding->name !== null && isset(Catalogue::all()[$finding->name])) {
                $parts[] = $this->explanation($finding);
            }
        }
        $text = implode("\n\n---\n\n", array_unique(array_filter($parts)));
        return $text === '' ? null : [
            'contents' => ['kind' => 'markdown', 'value' => $text],
            'range' => $this->workspace->lines($place->document->source)->range($spot->offset, $spot->length),
        ];
    }

    private function explanation(Finding $finding): string
    {
        $warning = Catalogue::all()[$finding->name];
        return "**$warning->name**: $warning->summary\n\n" . preg_replace('/\s*\n\s*/', ' ', $warning->why)
            . "\n\nFor instance:\n" . $this->block($warning->good);
    }

    /** @param list<string> $targets */
    private function file(Place $place, array $targets): string
    {
        $root = rtrim($place->folder->path, '/') . '/';
        $names = array_map(
            fn(string $path): string => $this->code(preg_replace('~^' . preg_quote($root, '~') . '~', '', $path)),
            $targets
        );
        return $names ? 'Includes ' . implode(', ', $names) . '.' : 'There is no such file in the include path.';
    }

    private function loops(Usages $usages, Spot $spot): string
    {
        $lines = [];
        foreach ($usages->loops($spot) as $loop) {
            $lines[] = 'The loop ' . $this->where($loop) . '.';
        }
        return implode("\n\n", $lines) ?: 'There is no such loop around this tag.';
    }

    private function where(Loop $loop): string
    {
        $source = $loop->scope->document->source;
        [$line] = $source->position($loop->node->offset);
        return $this->code($loop->node->tag->source) . ' (' . basename($source->name) . ", line $line)";
    }

    private function value(Place $place, Usages $usages, Spot $spot): string
    {
        $lines = [];
        $values = [];
        foreach ($usages->scopes($spot->document, $spot->node) as $scope) {
            $path = Usages::path($scope, $spot);
            $loop = $spot->reference->isPath() ? null : $scope->find($spot->reference->namespace);
            $what = $spot->reference->type === $spot->reference::KEY ? 'the key' : 'the element';
            $lines[] = match (true) {
                $spot->reference->isPath() => 'A value of the data.',
                $loop === null => 'There is no such loop around this tag.',
                default => "From $what of " . $this->where($loop) . '.',
            };
            if ($path !== null) {
                $values[implode('::', $path)][] = Sample::values($place->folder->data($scope->page()), $path);
            }
        }
        foreach ($values as $path => $found) {
            $found = array_merge(...$found);
            $texts = array_slice(array_unique(array_map(Sample::text(...), $found)), 0, self::MOST_VALUES);
            $lines[] = $this->code($path) . ($texts ? ' is ' . implode(', ', array_map($this->code(...), $texts)) : '')
                . (count($found) > count($texts) && count($found) > self::MOST_VALUES ? ', …' : '');
        }
        return implode("\n\n", array_unique($lines));
    }

    private function end(Place $place, Spot $spot): string
    {
        [$line] = $place->document->source->position($spot->node->offset);
        return 'Closes ' . $this->code($spot->node->tag->source) . " of line $line.";
    }

    private function code(string $text): string
    {
        return '`' . strtr($text, ['`' => "'", "\n" => ' ']) . '`';
    }

    private function block(string $text): string
    {
        return "```template\n" . strtr($text, ['```' => "'''"]) . "\n```";
    }
}
