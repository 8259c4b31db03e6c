<?php

namespace TemplateTool\Server;

use TemplateTool\Check\Finding;
use TemplateTool\Syntax\Source;

/**
 * Keeps the editor told of what is wrong: in the texts that are open, and in all that they include. A text is checked
 * inside the pages that use it, a page at a time, so that there is always time for a message in between.
 */
final class Diagnostics
{
    /** In how many of its pages a template is checked. "template check" does them all. */
    private const MOST_PAGES = 30;
    private const MOST_FINDINGS = 1000;

    /** After how many seconds the editor is told of what is known, though more is to come; of a text's own pages later. */
    private const PATIENCE = 0.08;
    private const LONGEST = 1.0;

    private const ERROR = 1;
    private const WARNING = 2;

    /** @var array<string, array{findings: array<string, list<Finding>>, files: array<string, true>}> by page */
    private array $results = [];

    /** @var array<string, array<string, true>> the pages to be checked, by the open text that they are checked for */
    private array $todo = [];

    /** @var array<string, string> by path: what the editor was told last */
    private array $published = [];

    /** @var array<string, true> the paths whose findings may have changed */
    private array $stale = [];

    /** When the first change was made that the editor wasn't told the outcome of; the same for texts that wait. */
    private ?float $since = null;
    private ?float $waitingSince = null;

    public function __construct(private Client $client, private Workspace $workspace)
    {
    }

    /** A text was opened or has changed. */
    public function changed(string $path): void
    {
        $this->workspace->folderOf($path)->includes->readFile($path);
        $this->plan($path);
        foreach ($this->results as $page => $result) {
            if (!in_array($page, $this->workspace->folderOf($page)->includes->pages($page), true)) {
                // Another template includes it now: it is checked from there.
                $this->stale += $result['files'];
                unset($this->results[$page], $this->todo[$path][$page]);
            } elseif (isset($result['files'][$path])) {
                $this->todo[$path][$page] = true;
            }
        }
        // What other texts are pages of, or pages for, may be different now.
        foreach (array_keys($this->workspace->templates()) as $each) {
            foreach ($this->pages($each) as $page) {
                if (!isset($this->results[$page])) {
                    $this->todo[$each][$page] = true;
                }
            }
        }
        $this->stale[$path] = true;
    }

    /** A project file or sample data, which is open, has changed. */
    public function settingsChanged(string $path): void
    {
        $this->everything();
        $this->stale[$path] = true;
    }

    /** Something has changed that may concern every text. */
    public function everything(): void
    {
        $this->results = [];
        $this->todo = [];
        $this->stale += array_fill_keys(array_keys($this->published), true);
        foreach ($this->workspace->templates() as $path => $_) {
            $this->plan($path);
        }
    }

    /** Checks the next page. Returns whether there was something to do. */
    public function work(): bool
    {
        if (!$this->todo && !$this->stale) {
            return false;
        }
        $path = array_key_first($this->todo);
        $page = $path === null ? null : array_key_first($this->todo[$path]);
        if ($page !== null) {
            // It may wait for several texts.
            foreach (array_keys($this->todo) as $each) {
                unset($this->todo[$each][$page]);
                if (!$this->todo[$each]) {
                    unset($this->todo[$each]);
                }
            }
            $this->check($page);
        }
        $this->since ??= microtime(true);
        if (!$this->todo || microtime(true) - $this->since > self::PATIENCE) {
            $this->publish();
            $this->since = null;
        }
        return true;
    }

    /** What is wrong with a file as it is now. @return list<Finding> */
    public function now(string $path): array
    {
        foreach ($this->todo[$path] ?? [] as $page => $_) {
            $this->check($page);
        }
        unset($this->todo[$path]);
        return $this->of($path);
    }

    /** @return list<Finding> what is known to be wrong with a file */
    private function of(string $path): array
    {
        $all = [];
        $open = $this->workspace->open($path);
        foreach ($this->results as $result) {
            foreach ($result['findings'][$path] ?? [] as $finding) {
                // A page that wasn't checked since speaks of a text that is gone.
                if ($open === null || $finding->source->text === $open->text()) {
                    $all[implode("\0", [$finding->offset, $finding->name ?? $finding->message])] ??= $finding;
                }
            }
        }
        usort($all, static fn(Finding $a, Finding $b): int =>
            [$a->offset, $a->severity, $a->message] <=> [$b->offset, $b->severity, $b->message]);
        return $all;
    }

    private function plan(string $path): void
    {
        $this->todo[$path] = array_fill_keys($this->pages($path), true);
    }

    /** @return list<string> the pages in which a template is checked */
    private function pages(string $path): array
    {
        return array_slice($this->workspace->folderOf($path)->includes->pages($path), 0, self::MOST_PAGES);
    }

    private function check(string $page): void
    {
        $folder = $this->workspace->folderOf($page);
        $open = $this->workspace->open($page);
        if (!$open && !is_file($page)) {
            $folder->includes->changed($page);
            $this->everything();
            return;
        }
        $before = $this->results[$page]['files'] ?? [];
        $checker = $folder->checker($page);
        $findings = $open && !Uri::isFile($open->uri)
            ? $checker->checkText($open->text(), $page)
            : $checker->checkFiles([$page]);
        $result = ['findings' => [], 'files' => [$page => true]];
        foreach ($checker->sources() as $path => $source) {
            $result['files'][$source->path === '' ? $path : $source->path] = true;
        }
        foreach ($findings as $finding) {
            $result['findings'][self::pathOf($finding)][] = $finding;
        }
        $this->results[$page] = $result;
        $this->stale += $before + $result['files'];
    }

    private function publish(): void
    {
        $wanted = [];
        foreach ($this->workspace->templates() as $path => $_) {
            $wanted += $this->workspace->folderOf($path)->includes->reach($path);
        }
        $settings = $this->aboutSettings();
        $waiting = [];
        $this->waitingSince ??= microtime(true);
        $isLate = microtime(true) - $this->waitingSince > self::LONGEST;
        foreach (array_keys($this->stale + $settings) as $path) {
            if (isset($this->todo[$path]) && !$isLate) {
                // With a part of its findings an open text would flicker.
                $waiting[$path] = true;
                continue;
            }
            $findings = isset($wanted[$path]) ? $this->of($path) : [];
            $open = $this->workspace->open($path);
            $diagnostics = array_map($this->diagnostic(...), array_slice($findings, 0, self::MOST_FINDINGS));
            array_push($diagnostics, ...$settings[$path] ?? []);
            $mark = md5(serialize([$open?->version, $diagnostics]));
            $isNews = $diagnostics || $open || isset($this->published[$path]);
            if ($isNews && ($this->published[$path] ?? '') !== $mark) {
                $this->client->publish($this->workspace->uri($path), $open?->version, $diagnostics);
            }
            if ($diagnostics || $open) {
                $this->published[$path] = $mark;
            } else {
                unset($this->published[$path]);
            }
        }
        $this->stale = $waiting;
        $this->waitingSince = $waiting ? $this->waitingSince : null;
    }

    /** What is wrong with project files and sample data. @return array<string, list<array>> diagnostics by path */
    private function aboutSettings(): array
    {
        $diagnostics = [];
        foreach ($this->workspace->folders() as $folder) {
            foreach ($folder->problems() as $problem) {
                preg_match('~^(.+?)(?::(\d+):(\d+))?: (.*)$~s', $problem, $match);
                $text = $this->workspace->open($match[1])?->text() ?? (string) @file_get_contents($match[1]);
                $source = new Source($match[1], $text, $match[1]);
                $line = min((int) $match[2], substr_count($text, "\n") + 1);
                $offset = $line ? $source->offset($line, (int) $match[3]) : 0;
                $diagnostics[$match[1]][] = [
                    'range' => $this->workspace->lines($source)->range($offset, 1),
                    'severity' => self::ERROR,
                    'source' => 'template',
                    'message' => $match[4],
                ];
            }
        }
        return $diagnostics;
    }

    /** A finding as the protocol has it. */
    public function diagnostic(Finding $finding): array
    {
        $lines = $this->workspace->lines($finding->source);
        $diagnostic = [
            'range' => $lines->range($finding->offset, $finding->length),
            'severity' => $finding->isError() ? self::ERROR : self::WARNING,
            'source' => 'template',
            'message' => implode("\n", [$finding->message, ...$finding->notes]),
        ];
        if ($finding->name !== null) {
            $diagnostic['code'] = $finding->name;
        }
        if ($finding->includedFrom && $this->client->can('textDocument.publishDiagnostics.relatedInformation')) {
            $diagnostic['relatedInformation'] = array_map($this->related(...), $finding->includedFrom);
        }
        return $diagnostic;
    }

    /** @param array{file: string, line: int, column: int} $place */
    private function related(array $place): array
    {
        $path = realpath($place['file']) ?: $place['file'];
        $position = ['line' => $place['line'] - 1, 'character' => $place['column'] - 1];
        $document = $this->workspace->document($path);
        if ($document) {
            $offset = $document->source->offset($place['line'], $place['column']);
            $position = $this->workspace->lines($document->source)->position($offset);
        }
        $location = ['uri' => $this->workspace->uri($path), 'range' => ['start' => $position, 'end' => $position]];
        return ['location' => $location, 'message' => 'included here'];
    }

    private static function pathOf(Finding $finding): string
    {
        return $finding->source->path === '' ? $finding->source->name : $finding->source->path;
    }
}
