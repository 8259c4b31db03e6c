<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Engine;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Reference;
use TemplateTool\Syntax\Source;

/** Ways from one place of the templates to others. */
final class Navigation
{
    private const READ = 2;
    private const TEXT = 1;

    public function __construct(private Server $server, private Workspace $workspace)
    {
    }

    /**
     * Of an include tag the file, of names and stars the loop, of one tag of a block the other; of a value its place
     * in the sample data, else the loop that it comes from.
     */
    public function definition(array $parameters): array
    {
        [$place, $spot] = $this->spot($parameters);
        $usages = $this->usages($place);
        $source = $place->document->source;
        return match ($spot?->part) {
            Spot::FILE => array_map($this->start(...), $usages->targets($spot->document, $spot->node)),
            Spot::END => [$this->opening($source, $spot->node)],
            Spot::KEYWORD => $spot->node->end === null ? [] : [$this->closing($source, $spot->node)],
            Spot::INDEX => $this->inData($usages, $spot) ?: $this->loops($usages, $spot),
            Spot::NAME, Spot::LOOP, Spot::STAR => $this->loops($usages, $spot),
            default => [],
        };
    }

    /**
     * Of a file the include tags that lead to it; outside of tags, those that lead to this file. Of a key of sample
     * data the tags that may find it.
     */
    public function references(array $parameters): array
    {
        $uri = $parameters['textDocument']['uri'] ?? null;
        if (is_string($uri) && !$this->workspace->isTemplate(Uri::path($uri))) {
            return $this->ofKey(Uri::path($uri), $parameters['position'] ?? []);
        }
        [$place, $spot] = $this->spot($parameters, true);
        $isWhole = $parameters['context']['includeDeclaration'] ?? true;
        $found = [];
        foreach ($this->same($place, $spot, null) as $each) {
            if ($isWhole || $each->part !== Spot::NAME) {
                $found[] = $this->location($each);
            }
        }
        $isValue = $spot?->part === Spot::INDEX;
        return $isValue && $isWhole ? [...$this->inData($this->usages($place), $spot), ...$found] : $found;
    }

    /** All tags of a project that may mean the key at a position of its sample data. */
    private function ofKey(string $file, array $position): array
    {
        $text = SampleText::of($file, $this->workspace->open($file)?->text());
        $paths = $text ? $text->paths($this->workspace->lines($text->source)->offset($position)) : [];
        if (!$paths) {
            return [];
        }
        $folder = $this->workspace->folderOf($file);
        $folder->includes->read(fn() => $this->server->yield());
        $usages = new Usages($this->workspace, $folder, fn() => $this->server->yield());
        $found = [];
        foreach ($usages->ofPaths($paths) as $each) {
            $found[] = $this->location($each);
        }
        return $found;
    }

    public function highlight(array $parameters): array
    {
        [$place, $spot] = $this->spot($parameters);
        $source = $place->document->source;
        $lines = $this->workspace->lines($source);
        if ($spot?->part === Spot::KEYWORD || $spot?->part === Spot::END) {
            $node = $spot->node;
            $ranges = [$this->opening($source, $node)];
            $node->end === null || $ranges[] = $this->closing($source, $node);
            $kind = ['kind' => self::TEXT];
            return array_map(static fn(array $each): array => ['range' => $each['range']] + $kind, $ranges);
        }
        $found = [];
        foreach ($spot ? $this->same($place, $spot, $place->path) : [] as $each) {
            $found[] = ['range' => $lines->range($each->offset, $each->length), 'kind' => self::READ];
        }
        return $found;
    }

    public function prepareRename(array $parameters): ?array
    {
        [$place, $spot] = $this->spot($parameters);
        if (!$this->isName($spot) || !$this->usages($place)->loops($spot)) {
            throw new ResponseError(ResponseError::FAILED, 'only the names of loops can be changed');
        }
        return $this->location($spot)['range'];
    }

    /** Changes the name of a loop, here and in all that it includes. */
    public function rename(array $parameters): array
    {
        [$place, $spot] = $this->spot($parameters, true);
        $name = (string) $parameters['newName'];
        $usages = $this->usages($place);
        $loops = $this->isName($spot) ? $usages->loops($spot) : [];
        if (!$loops) {
            throw new ResponseError(ResponseError::FAILED, 'only the names of loops can be changed');
        }
        if ((new Reference("$name::*", 0))->namespace !== $name || !$this->canBeName($name)) {
            throw new ResponseError(ResponseError::FAILED, "\"$name\" can't be the name of a loop");
        }
        // What is used here may be used in other pages as well, inside other loops of this name.
        do {
            $count = count($loops);
            $spots = iterator_to_array($usages->ofLoops($loops), false);
            foreach ($spots as $each) {
                $loops += $usages->loops($each);
            }
        } while (count($loops) > $count);

        $this->mustBeFree($usages, $loops, $spots, $name);

        $changes = [];
        foreach ($spots as $each) {
            if ($each->part !== Spot::STAR) {
                $location = $this->location($each);
                $changes[$location['uri']][] = ['range' => $location['range'], 'newText' => $name];
            }
        }
        return ['changes' => $changes ?: new \stdClass()];
    }

    /** What a request points at. $everywhere: the project has to be known. @return array{Place, ?Spot} */
    private function spot(array $parameters, bool $everywhere = false): array
    {
        $place = $this->workspace->place($parameters);
        if ($everywhere) {
            $place->folder->includes->read(fn() => $this->server->yield());
        }
        return [$place, Spot::at($place->document, $place->offset)];
    }

    private function usages(Place $place): Usages
    {
        return new Usages($this->workspace, $place->folder, fn() => $this->server->yield());
    }

    /** What means the same as a spot. $only: the path of the only file to look into. @return iterable<Spot> */
    private function same(Place $place, ?Spot $spot, ?string $only): iterable
    {
        $usages = $this->usages($place);
        switch ($spot?->part) {
            case null:
            case Spot::FILE:
                foreach ($spot ? $usages->targets($spot->document, $spot->node) : [$place->path] as $target) {
                    foreach ($usages->ofFile($target) as $each) {
                        if ($only === null || $each->document->source->path === $only) {
                            yield $each;
                        }
                    }
                }
                break;
            case Spot::INDEX:
                yield from $usages->ofPaths($usages->paths($spot), $only);
                break;
            case Spot::NAME:
            case Spot::LOOP:
            case Spot::STAR:
                yield from $usages->ofLoops($usages->loops($spot), $only);
        }
    }

    private function isName(?Spot $spot): bool
    {
        return $spot?->part === Spot::NAME || $spot?->part === Spot::LOOP;
    }

    private function canBeName(string $name): bool
    {
        return strpbrk($name, "{},' \t\n\r\v\f") === false
            && (new Engine())->complaint("{dynamic $name,x}{{$name}::*}{/dynamic}") === null;
    }

    /**
     * @param array<string, Loop> $loops
     * @param list<Spot> $spots
     * @throws ResponseError when there is a loop of this name around a spot, or inside one of the loops
     */
    private function mustBeFree(Usages $usages, array $loops, array $spots, string $name): void
    {
        $other = $usages->inside($loops, $name);
        foreach ($other ? [] : $spots as $spot) {
            foreach ($usages->scopes($spot->document, $spot->node) as $scope) {
                $other ??= $scope->find($name);
            }
        }
        if ($other) {
            $source = $other->scope->document->source;
            $place = basename($source->name) . ', line ' . $source->position($other->node->offset)[0];
            throw new ResponseError(ResponseError::FAILED, "there is a loop \"$name\" already: $place");
        }
    }

    /** @return list<array> the opening tags of the loops that a spot means */
    private function loops(Usages $usages, Spot $spot): array
    {
        return array_values(array_map(
            fn(Loop $loop): array => $this->opening($loop->scope->document->source, $loop->node),
            $usages->loops($spot)
        ));
    }

    /** @return list<array> */
    private function inData(Usages $usages, Spot $spot): array
    {
        return array_map(fn(array $place): array => $this->workspace->location(...$place), $usages->inData($spot));
    }

    private function start(string $path): array
    {
        $start = ['line' => 0, 'character' => 0];
        return ['uri' => $this->workspace->uri($path), 'range' => ['start' => $start, 'end' => $start]];
    }

    private function opening(Source $source, Node $node): array
    {
        return $this->workspace->location($source, $node->offset, Spot::endOf($node) - $node->offset);
    }

    private function closing(Source $source, Node $node): array
    {
        return $this->workspace->location($source, $node->endOffset, $node->end - $node->endOffset);
    }

    private function location(Spot $spot): array
    {
        return $this->workspace->location($spot->document->source, $spot->offset, $spot->length);
    }
}
