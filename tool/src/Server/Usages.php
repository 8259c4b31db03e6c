<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;
use TemplateTool\Syntax\Source;

/** Finds the places where a loop, a value of the data or a file is used, across a project. For one request. */
final class Usages
{
    /** On how many ways a template is looked at. */
    private const MOST_WAYS = 30;
    private const DEEPEST = 50;

    /** @var array<string, list<?Scope>> by path */
    private array $ways = [];

    /** $yield: called now and then, and may throw to end the search. */
    public function __construct(private Workspace $workspace, private Folder $folder, private ?\Closure $yield = null)
    {
    }

    /** The place of a node, on each way that leads to its document. @return list<Scope> */
    public function scopes(Document $document, ?Node $node): array
    {
        return $this->scopesIn($document, $node->loop ?? -1);
    }

    /** The same, inside the loop with this number. @return list<Scope> */
    public function scopesIn(Document $document, int $loop): array
    {
        return array_map(
            static fn(?Scope $outer): Scope => new Scope($document, $loop, $outer),
            $this->ways($document, 0)
        );
    }

    /** The loops that a star, or the name in front of it, stands for. @return array<string, Loop> by key */
    public function loops(Spot $spot): array
    {
        if ($spot->part === Spot::NAME) {
            $scope = $this->scopes($spot->document, $spot->node)[0];
            $loop = new Loop($spot->node, $scope);
            return [$loop->key() => $loop];
        }
        $loops = [];
        $reference = $spot->reference;
        foreach ($reference && !$reference->isPath() ? $this->scopes($spot->document, $spot->node) : [] as $scope) {
            $loop = $scope->find($reference->namespace);
            if ($loop) {
                $loops[$loop->key()] = $loop;
            }
        }
        return $loops;
    }

    /**
     * All that refers to loops: names in front of stars, and stars without one. Names of the loops themselves come
     * with them.
     *
     * @param array<string, Loop> $loops
     * @return \Generator<int, Spot>
     */
    public function ofLoops(array $loops, ?string $only = null): \Generator
    {
        $paths = [];
        foreach ($loops as $loop) {
            $paths += $this->folder->includes->reach($loop->scope->document->source->path);
        }
        foreach ($only === null ? array_keys($paths) : [$only] as $path) {
            $document = $this->document($path);
            foreach ($document->nodes ?? [] as $node) {
                foreach (Spot::parts($document, $node) as $spot) {
                    $isName = $spot->part === Spot::LOOP || $spot->part === Spot::NAME;
                    $isStar = $spot->part === Spot::STAR && $spot->reference->namespace === '';
                    if (($isName || $isStar) && array_intersect_key($this->loops($spot), $loops)) {
                        yield $spot;
                    }
                }
            }
        }
    }

    /** A loop of this name that stands inside one of the given loops. @param array<string, Loop> $loops */
    public function inside(array $loops, string $name): ?Loop
    {
        foreach ($loops as $loop) {
            foreach ($this->folder->includes->reach($loop->scope->document->source->path) as $path => $_) {
                $document = $this->document($path);
                foreach ($document->nodes ?? [] as $node) {
                    if ($node->tag->name !== $name) {
                        continue;
                    }
                    foreach ($this->scopes($document, $node) as $scope) {
                        foreach ($scope->loops() as $outer) {
                            if (isset($loops[$outer->key()])) {
                                return new Loop($node, $scope);
                            }
                        }
                    }
                }
            }
        }
        return null;
    }

    /**
     * All references to a value: paths as Scope::path() has them.
     *
     * @param list<list<string>> $wanted
     * @return \Generator<int, Spot>
     */
    public function ofPaths(array $wanted, ?string $only = null): \Generator
    {
        foreach ($only === null ? $this->folder->includes->templates() : [$only] as $path) {
            $document = $this->mentions($path, $wanted) ? $this->document($path) : null;
            foreach ($document->nodes ?? [] as $node) {
                foreach (Spot::parts($document, $node) as $spot) {
                    $keys = $spot->part === Spot::INDEX ? $this->keys($this->paths($spot)) : [];
                    if (array_intersect($keys, $this->keys($wanted))) {
                        yield $spot;
                    }
                }
            }
        }
    }

    /**
     * What an index of a reference means: where in the data it leads, up to and with this index.
     *
     * @return list<list<string>>
     */
    public function paths(Spot $spot): array
    {
        if ($spot->reference->isPath()) {
            // It means the same on each way.
            return [array_slice($spot->reference->indexes, 0, $spot->index + 1)];
        }
        $paths = [];
        foreach ($this->scopes($spot->document, $spot->node) as $scope) {
            $path = self::path($scope, $spot);
            if ($path !== null) {
                $paths[implode("\0", $path)] = $path;
            }
        }
        return array_values($paths);
    }

    /** The same on one way; for a star, where the element is. @return ?list<string> null when there is no such loop */
    public static function path(Scope $scope, Spot $spot): ?array
    {
        $path = $scope->path($spot->reference);
        $behind = count($spot->reference->indexes) - 1 - max(-1, $spot->index);
        return $path !== null && $behind > 0 ? array_slice($path, 0, -$behind) : $path;
    }

    /**
     * Where the sample data has what an index means: for each file of data, the first place.
     *
     * @return list<array{Source, int, int}> with offset and length
     */
    public function inData(Spot $spot): array
    {
        $texts = [];
        $found = [];
        foreach ($this->scopes($spot->document, $spot->node) as $scope) {
            $path = self::path($scope, $spot);
            $file = $path === null ? null : $this->folder->project()?->dataFile($scope->page());
            if ($file !== null && !isset($found[$file])) {
                $texts[$file] ??= SampleText::of($file, $this->workspace->open($file)?->text());
                $place = $texts[$file]?->place($path);
                $place && $found[$file] = [$texts[$file]->source, ...$place];
            }
        }
        return array_values($found);
    }

    /** The include tags that lead to a file. @return \Generator<int, Spot> */
    public function ofFile(string $path): \Generator
    {
        foreach ($this->folder->includes->includers($path) as $includer) {
            $document = $this->document($includer);
            foreach ($document->nodes ?? [] as $node) {
                if (in_array($path, $this->targets($document, $node), true)) {
                    yield from Spot::parts($document, $node);
                }
            }
        }
    }

    /** The paths of the files that an include tag leads to; none for other tags. @return list<string> */
    public function targets(Document $document, Node $node): array
    {
        if ($node->tag->kind !== Kind::Include || $node->tag->complaint !== null) {
            return [];
        }
        $path = $document->source->path;
        $targets = [];
        foreach (array_slice([$path, ...$this->folder->includes->pages($path)], 0, self::MOST_WAYS) as $page) {
            $files = $this->folder->files($page);
            foreach ([$node->tag->argument, $node->tag->includedName($this->folder->data($page))] as $name) {
                $found = $files->find($name, $page);
                if ($found !== null && !is_dir($found)) {
                    $targets[realpath($found) ?: $found] = true;
                }
            }
        }
        return array_keys($targets);
    }

    /** @return non-empty-list<?Scope> the places of the include tags that lead to a document; null for none */
    private function ways(Document $document, int $depth): array
    {
        $path = $document->source->path;
        if (isset($this->ways[$path])) {
            return $this->ways[$path];
        }
        // Files that include each other in a circle find this.
        $this->ways[$path] = [null];
        $ways = [];
        foreach ($depth < self::DEEPEST ? $this->ofFile($path) : [] as $spot) {
            foreach ($this->ways($spot->document, $depth + 1) as $outer) {
                $ways[] = new Scope($spot->document, $spot->node->loop, $outer);
                if (count($ways) >= self::MOST_WAYS) {
                    break 2;
                }
            }
        }
        return $this->ways[$path] = $ways ?: [null];
    }

    private function document(string $path): ?Document
    {
        $this->yield && ($this->yield)();
        return $this->workspace->document($path);
    }

    /** Whether a file can hold one of these references at all. */
    private function mentions(string $path, array $wanted): bool
    {
        $text = $this->workspace->open($path)?->text() ?? (string) @file_get_contents($path);
        foreach ($wanted as $each) {
            // What stands behind the last star is written out; without a star, all of it.
            $stars = array_keys($each, Scope::ELEMENT, true);
            $written = $stars ? array_slice($each, end($stars)) : $each;
            if (str_contains($text, implode('::', $written))) {
                return true;
            }
        }
        return false;
    }

    /** @return list<string> */
    private function keys(array $paths): array
    {
        return array_map(static fn(array $path): string => implode("\0", $path), $paths);
    }
}
