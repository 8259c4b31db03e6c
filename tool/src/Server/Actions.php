<?php

namespace TemplateTool\Server;

use TemplateTool\Check\Finding;
use TemplateTool\Project\Project;
use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Source;

/** What can be done about findings. */
final class Actions
{
    private const FIX = 'quickfix';
    private const FIX_ALL = 'source.fixAll';

    public function __construct(private Workspace $workspace, private Diagnostics $diagnostics)
    {
    }

    public function actions(array $parameters): array
    {
        $place = $this->workspace->place($parameters);
        $source = $place->document->source;
        $lines = $this->workspace->lines($source);
        $from = $lines->offset($parameters['range']['start'] ?? []);
        $to = $lines->offset($parameters['range']['end'] ?? []);
        $only = $parameters['context']['only'] ?? null;
        $isWanted = static fn(string $kind): bool => $only === null
            || array_filter($only, static fn(string $each): bool => str_starts_with("$kind.", "$each."));

        $actions = [];
        $all = [];
        foreach ($this->diagnostics->now($place->path) as $finding) {
            if ($finding->source->text !== $source->text) {
                continue;
            }
            array_push($all, ...$finding->edits);
            if ($isWanted(self::FIX) && $finding->offset <= $to && $from <= $finding->offset + $finding->length) {
                array_push($actions, ...$this->about($place, $finding));
            }
        }
        if ($all && $isWanted(self::FIX_ALL)) {
            $actions[] = [
                'title' => 'Fix all that has one right answer',
                'kind' => self::FIX_ALL,
                'edit' => $this->edit($source, self::apart($all)),
            ];
        }
        return $actions;
    }

    /** @return list<array> */
    private function about(Place $place, Finding $finding): array
    {
        $common = ['kind' => self::FIX, 'diagnostics' => [$this->diagnostics->diagnostic($finding)]];
        $actions = [];
        if ($finding->edits) {
            $edit = $this->edit($finding->source, $finding->edits);
            $actions[] = ['title' => $this->title($finding), 'edit' => $edit, 'isPreferred' => true] + $common;
        }
        foreach ($finding->actions as $action) {
            $actions[] = ['title' => $action->title, 'edit' => $this->edit($finding->source, $action->edits)] + $common;
        }
        if ($finding->name !== null) {
            $edit = $this->turnOff($place->folder->projectFile(), $finding->name);
            $title = "Turn off \"$finding->name\" in " . Project::FILE;
            $edit && $actions[] = ['title' => $title, 'edit' => $edit] + $common;
        }
        return $actions;
    }

    private function title(Finding $finding): string
    {
        [$edit] = $finding->edits;
        $old = substr($finding->source->text, $edit->offset, $edit->length);
        return match (true) {
            count($finding->edits) > 1 => "Fix \"$finding->name\"",
            $edit->text === '' => 'Delete ' . json_encode($old, JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES),
            $old === '' => "Insert \"$edit->text\"",
            default => "Write \"$edit->text\"",
        };
    }

    /** @param list<Edit> $edits */
    private function edit(Source $source, array $edits): array
    {
        $lines = $this->workspace->lines($source);
        $path = $source->path === '' ? $source->name : $source->path;
        $changes = array_map(static fn(Edit $edit): array => [
            'range' => $lines->range($edit->offset, $edit->length),
            'newText' => $edit->text,
        ], $edits);
        return ['changes' => [$this->workspace->uri($path) => $changes]];
    }

    private function turnOff(string $file, string $name): ?array
    {
        $isThere = is_file($file);
        $source = new Source($file, $isThere ? (string) @file_get_contents($file) : '', $file);
        $edit = ProjectText::warningOff($isThere ? $source->text : '{}', $name);
        if ($isThere || !$edit) {
            return $edit ? $this->edit($source, [$edit]) : null;
        }
        $uri = $this->workspace->uri($file);
        $start = ['line' => 0, 'character' => 0];
        $change = ['range' => ['start' => $start, 'end' => $start], 'newText' => '{' . $edit->text . "}\n"];
        return ['documentChanges' => [
            ['kind' => 'create', 'uri' => $uri, 'options' => ['ignoreIfExists' => true]],
            ['textDocument' => ['uri' => $uri, 'version' => null], 'edits' => [$change]],
        ]];
    }

    /** Those that don't overlap. @param list<Edit> $edits @return list<Edit> */
    private static function apart(array $edits): array
    {
        usort($edits, static fn(Edit $a, Edit $b): int => $a->offset <=> $b->offset);
        $apart = [];
        $end = -1;
        foreach ($edits as $edit) {
            if ($edit->offset >= $end) {
                $apart[] = $edit;
                $end = $edit->offset + max(1, $edit->length);
            }
        }
        return $apart;
    }
}
