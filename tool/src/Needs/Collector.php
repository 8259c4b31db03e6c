<?php

namespace TemplateTool\Needs;

use TemplateTool\Files\Files;
use TemplateTool\Files\Unreadable;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Node;

/**
 * Gathers what a page and all that it includes want from their data.
 *
 *     $top = (new Collector($files))->collect('page.tpl');
 *
 * What lies inside a loop is wanted whether the list has elements or not.
 */
final class Collector
{
    private const DEEPEST = 100;

    private Need $top;
    private string $page;

    /** $data: sample data; it only tells which files are included when the data names them. */
    public function __construct(
        private Files $files,
        private Documents $documents = new Documents(),
        private ?array $data = null,
    ) {
    }

    /**
     * $path: of a page without errors.
     *
     * @return Need of the top of the data
     * @throws Unreadable
     */
    public function collect(string $path): Need
    {
        $this->top = new Need();
        $this->page = $path;
        $this->walk($this->documents->of($this->files->read($path)), new Scope(), 0);
        $this->top->settle();
        return $this->top;
    }

    private function walk(Document $document, Scope $scope, int $depth): void
    {
        // By the number of the block: the scope inside it.
        $inside = [-1 => $scope];
        foreach ($document->nodes as $i => $node) {
            $scope = $inside[$node->parent];
            if ($node->tag->complaint !== null || $node->isCut()) {
                $inside[$i] = $scope;
                continue;
            }
            $place = basename($document->source->name) . ':' . $document->source->position($node->offset)[0];
            match (true) {
                $node->tag->kind->isLoop() => $inside[$i] = $this->loop($node, $scope, $place),
                $node->tag->kind->isOptional() => $inside[$i] = $this->section($node, $scope, $place),
                $node->tag->kind === Kind::Include => $this->include($document, $node, $scope, $place, $depth),
                default => $this->value($node, $scope, $place),
            };
        }
    }

    private function loop(Node $node, Scope $scope, string $place): Scope
    {
        $path = $scope->path($node->tag->references[0]);
        if ($path !== null) {
            $this->top->at([...$path, Need::ELEMENT]);
            $this->demand([$path], $scope, $place);
        }
        return $scope->inLoop($node->tag->name, $path);
    }

    private function section(Node $node, Scope $scope, string $place): Scope
    {
        [$reference] = $node->tag->references;
        $compared = str_contains($node->tag->argument, ' ') ? $node->tag->compared : null;
        $path = $scope->path($reference);
        $list = $scope->listOfKey($reference);
        if ($list !== null) {
            $compared === null ? $this->top->at($list)->hasKeys = true : $this->top->at($list)->keys[$compared] = true;
        } elseif ($path !== null) {
            $need = $this->note($path, $place);
            // Quotes around a value are no part of it.
            $compared = $compared === null ? null : preg_replace("/^[^']*'(.*)'[^']*\\z/s", '$1', $compared);
            $compared === null ? $need->isFlag = true : $need->compared[$compared] = true;
        }
        return $scope->inSection(new Guard($path, $node->tag->kind === Kind::NotOptional, $compared));
    }

    private function value(Node $node, Scope $scope, string $place): void
    {
        $paths = [];
        $isPlain = $node->tag->kind === Kind::Plain;
        foreach ($node->tag->references as $reference) {
            $path = $scope->path($reference);
            $list = $scope->listOfKey($reference);
            if ($path !== null) {
                $need = $this->note($path, $place);
                $isPlain || !$reference->isPath() ? $need->isText = true : $need->isString = true;
                $paths[] = $path;
            } elseif ($list !== null) {
                $this->top->at($list)->hasKeys = true;
                return;
            }
        }
        if ($node->tag->fallback === null) {
            $paths && $this->demand($paths, $scope, $place);
        } else {
            foreach ($paths as $path) {
                $this->top->at($path)->isBare = true;
            }
        }
    }

    private function include(Document $document, Node $node, Scope $scope, string $place, int $depth): void
    {
        $name = $node->tag->includedName($this->data);
        $path = $this->files->find($name, $this->page);
        $isData = $name !== $node->tag->argument || str_contains($name, '::') || !str_contains($name, '.');
        $reference = $node->tag->references[0];
        if (($path === null || $name !== $node->tag->argument) && $isData && $scope->path($reference) !== null) {
            $this->note($scope->path($reference), $place)->isFile = true;
            $this->demand([$scope->path($reference)], $scope, $place);
        }
        if ($path !== null && $depth < self::DEEPEST && is_file($path)) {
            try {
                $this->walk($this->documents->of($this->files->read($path)), $scope, $depth + 1);
            } catch (Unreadable) {
                // The check tells about it.
            }
        }
    }

    private function note(array $path, string $place): Need
    {
        $need = $this->top->at($path);
        $need->places[$place] = true;
        return $need;
    }

    /**
     * That one of these has to be there.
     *
     * @param list<list<string>> $paths
     */
    private function demand(array $paths, Scope $scope, string $place): void
    {
        $paths = array_values(array_unique($paths, SORT_REGULAR));
        $guards = [];
        foreach ($paths as $path) {
            $this->note($path, $place);
            $first = self::behindElement($path);
            for ($i = max(self::covered($path, $scope->guards), $first - 1, 0); $i < count($path); $i++) {
                $this->top->at(array_slice($path, 0, $i + 1))->isBare = true;
            }
            $ofPath = $scope->guardsOf($path);
            $guards = count($ofPath) > count($guards) ? $ofPath : $guards;
            if (self::covered($path, $guards) === count($path)) {
                return;
            }
        }
        $foreign = array_filter($guards, static fn(Guard $guard): bool => $guard->covers($paths[0]) === 0);
        if (count($paths) > 1 || $foreign) {
            $this->demandAtTimes($paths, $guards);
            return;
        }
        for ($i = max(self::covered($paths[0], $guards), self::behindElement($paths[0])); $i < count($paths[0]); $i++) {
            $this->top->at(array_slice($paths[0], 0, $i + 1))->isRequired = true;
        }
    }

    /**
     * That one of these has to be there when the sections around it are shown. A section that no schema can ask about
     * counts as shown; only what a key decides for one element alone is left open.
     *
     * @param non-empty-list<list<string>> $paths
     * @param list<Guard> $guards
     */
    private function demandAtTimes(array $paths, array $guards): void
    {
        $starts = array_map(self::behindElement(...), $paths);
        $isByKey = array_filter($guards, static fn(Guard $guard): bool => $guard->path === null) !== [];
        $levels = array_map(static fn(Guard $guard): int => self::behindElement($guard->path ?? []), $guards);
        // All is said in one place: of the questions, those count that are asked there.
        $start = max([0, ...array_filter($levels, static fn(int $level): bool => $level <= min($starts))]);
        $start = $guards ? $start : min($starts);
        $asked = array_filter($guards, static fn(Guard $guard): bool => $guard->path !== null
            && self::behindElement($guard->path) === $start);
        $common = array_slice($paths[0], 0, $start);
        $isApart = array_filter($paths, static fn(array $path): bool => array_slice($path, 0, $start) !== $common) !== []
            || array_filter($asked, static fn(Guard $guard): bool => array_slice($guard->path, 0, $start) !== $common) !== [];
        if ($isApart || ($isByKey && max($starts) > 0)) {
            return;
        }
        $rule = new Rule(
            array_map(static fn(array $path): array => array_slice($path, $start), $paths),
            array_values(array_map(static fn(Guard $guard): Guard => $guard->from($start), $asked))
        );
        $this->top->at($common)->rules[serialize($rule)] = $rule;
    }

    /** How many steps of a path are there for sure. @param list<Guard> $guards */
    private static function covered(array $path, array $guards): int
    {
        return max([0, ...array_map(static fn(Guard $guard): int => $guard->covers($path), $guards)]);
    }

    /** The number of steps up to the last element. */
    private static function behindElement(array $path): int
    {
        $last = array_keys($path, Need::ELEMENT, true);
        return $last ? end($last) + 1 : 0;
    }
}
