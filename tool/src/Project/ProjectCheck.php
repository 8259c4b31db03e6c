<?php

namespace TemplateTool\Project;

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Findings;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Source;

/**
 * Checks the templates of a project, each page with its own sample data. A template that others include is looked at
 * from its pages, also when it is the only one that is asked for.
 */
final class ProjectCheck
{
    private Documents $documents;

    /** @var array<string, Source> */
    private array $sources = [];

    /** @var array<string, true> */
    private array $looked = [];

    /**
     * $more: what counts in addition to the project's settings, or, as the include path and the data, in their place.
     * $base: the current folder, when findings shall name files from there; empty for absolute names. $texts: as in Checker.
     *
     * @param array<string, string> $texts
     */
    public function __construct(
        private Project $project,
        private Options $more = new Options([]),
        private string $base = '',
        ?Documents $documents = null,
        private array $texts = [],
    ) {
        $this->documents = $documents ?? new Documents();
    }

    /**
     * Checks these files and what they include; without any, the whole project. $onFile: as in Checker.
     *
     * @param list<string> $paths
     * @return list<Finding> by file and place
     * @throws \TemplateTool\Json\Broken when sample data can't be read
     */
    public function check(array $paths = [], ?callable $onFile = null): array
    {
        $this->sources = [];
        $given = array_map(self::real(...), $paths);
        $all = array_values(array_unique([...array_map(self::real(...), $this->project->files()), ...$given]));
        $files = new Files($this->includePath(), $this->texts);
        $includes = new Includes($all, $files, $this->data(...));
        $pages = $paths ? $includes->above($given) : $all;
        $targets = $paths ? $includes->below($given) : $all;

        // First those that nothing includes, and of these first the ones whose data may name further files.
        $findings = new Findings($this->more);
        $roots = array_filter($pages, static fn(string $page): bool => !$includes->isIncluded($page));
        $this->checkPages(array_filter($roots, fn($page): bool => $this->data($page) !== null), $targets, $findings, $onFile);
        $this->checkPages($this->left($roots), $targets, $findings, $onFile);
        // What is left includes itself in a circle.
        foreach ($pages as $page) {
            $this->checkPages($this->left([$page]), $targets, $findings, $onFile);
        }
        $others = array_fill_keys(array_diff($includes->below($pages), $targets), $paths !== []);
        return array_values(array_filter(
            $findings->sorted(),
            static fn(Finding $finding): bool => !($others[$finding->source->path] ?? false)
        ));
    }

    /** @return array<string, Source> by path: the files that have been read */
    public function sources(): array
    {
        return $this->sources;
    }

    /** @return list<string> all paths at which included files were looked for */
    public function looked(): array
    {
        return array_keys($this->looked);
    }

    /** @param list<string> $pages @return list<string> those that haven't been seen yet */
    private function left(array $pages): array
    {
        return array_values(array_filter($pages, fn(string $page): bool => !isset($this->sources[$page])));
    }

    private function checkPages(array $pages, array $wanted, Findings $findings, ?callable $onFile): void
    {
        $groups = [];
        foreach ($pages as $page) {
            $groups[$this->more->data === null ? $this->project->dataFile($page) ?? '' : ''][] = $page;
        }
        foreach ($groups as $group) {
            $checker = new Checker($this->options($group[0]), $this->documents, $this->texts);
            $findings->addAll($checker->checkFiles(array_map($this->shown(...), $group), $onFile, $wanted));
            $this->sources += $checker->sources();
            $this->looked += array_fill_keys($checker->looked(), true);
        }
    }

    private function options(string $page): Options
    {
        $own = $this->project->options();
        return new Options(
            $this->includePath(),
            array_values(array_unique([...$own->off, ...$this->more->off])),
            $own->security || $this->more->security,
            $this->data($page),
            array_values(array_unique([...$own->errors, ...$this->more->errors])),
            [...$own->vouched, ...$this->more->vouched]
        );
    }

    private function data(string $page): ?array
    {
        return $this->more->data ?? $this->project->dataOf($page);
    }

    /** @return list<string> */
    private function includePath(): array
    {
        return array_map($this->shown(...), $this->more->includePath ?: $this->project->includePath);
    }

    /** A path relative to the base, when both lie in the project. */
    private function shown(string $path): string
    {
        $isIn = fn(string $path): bool => str_starts_with("$path/", "{$this->project->folder}/");
        if ($this->base === '' || !str_starts_with($path, '/') || !$isIn($path)) {
            return $path;
        }
        if (!$isIn($this->base)) {
            return str_starts_with($path, "$this->base/") ? substr($path, strlen($this->base) + 1) : $path;
        }
        $from = explode('/', $this->base);
        $to = explode('/', $path);
        while ($from && $to && $from[0] === $to[0]) {
            array_shift($from);
            array_shift($to);
        }
        return implode('/', [...array_fill(0, count($from), '..'), ...$to]) ?: '.';
    }

    private static function real(string $path): string
    {
        return realpath($path) ?: $path;
    }
}
