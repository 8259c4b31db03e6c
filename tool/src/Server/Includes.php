<?php

namespace TemplateTool\Server;

use TemplateTool\Files\Files;
use TemplateTool\Syntax\Reference;

/** Which template of a project includes which. Texts that are open count as they are in the editor. */
final class Includes
{
    // The argument of an include tag; what looks like one inside of doubled braces is none.
    private const TAG = '~(?:\{\{|\{(?=[ \t\n\r]|\z))(*SKIP)(*FAIL)|\{include([^{}]*+)~';

    // A brace inside a tag: all that follows is part of that tag.
    private const LOST = '~(?:\{\{|\{(?=[ \t\n\r]|\z))(*SKIP)(*FAIL)|\{[^{}]*+\{~';
    private const BLANKS = " \t\n\r\v\f";
    private const FRESH = 2.0;

    /** @var array<string, array{string, list<string>}> by path: what tells a change, and the names it includes */
    private array $names = [];

    /** @var ?array<string, array<string, true>> by path: the paths of the templates that include it */
    private ?array $includers = null;

    /** @var array<string, list<string>> by path: those that it includes */
    private array $included = [];

    private float $read = 0.0;

    /** @var ?list<string> the paths that are still to be read; null when no reading is under way */
    private ?array $todo = null;

    /** @var array<string, true> the paths that this reading has found */
    private array $seen = [];

    public function __construct(private Folder $folder, private Workspace $workspace)
    {
    }

    /** Whether the project has been read once. */
    public function isKnown(): bool
    {
        return $this->read > 0.0;
    }

    /** A file was made, changed or deleted on the disk. */
    public function changed(string $path, bool $isNew = true): void
    {
        if (is_file($path) || $this->workspace->open($path)) {
            $this->readFile($path);
        } else {
            $isNew = $isNew || isset($this->names[$path]);
            unset($this->names[$path]);
        }
        $this->includers = $isNew ? null : $this->includers;
    }

    /** What includes lead to may have changed. */
    public function forget(): void
    {
        $this->includers = null;
        $this->todo = null;
    }

    /** Files may have changed, and nobody tells which: they are looked at again. */
    public function doubt(): void
    {
        $this->forget();
        $this->read = 0.0;
    }

    /**
     * Reads what has changed. $onFile is called now and then with the percentage done; what it throws goes through, and
     * the next call goes on from there.
     */
    public function read(?callable $onFile = null): void
    {
        if (microtime(true) - $this->read < self::FRESH) {
            return;
        }
        if ($this->todo === null) {
            $this->todo = $this->folder->templates();
            $this->seen = [];
        }
        while ($this->todo) {
            $path = array_pop($this->todo);
            $path = realpath($path) ?: $path;
            $this->seen[$path] = true;
            $this->readFile($path);
            if ((count($this->todo) & 63) === 0 && $onFile) {
                $onFile(intdiv(100 * count($this->seen), count($this->seen) + count($this->todo)));
            }
        }
        // Those that were closed, deleted, or lie outside of the project's folders.
        foreach (array_diff_key($this->names, $this->seen) as $path => $_) {
            $this->changed($path, false);
        }
        $this->todo = null;
        $this->read = microtime(true);
    }

    /** The text of a template may have changed. */
    public function readFile(string $path): void
    {
        if ($this->scan($path)) {
            $this->includers = null;
        }
    }

    /** @return list<string> the paths of all templates of the project */
    public function templates(): array
    {
        return array_keys($this->names);
    }

    /** @return list<string> the paths of the templates that a template includes itself */
    public function of(string $path): array
    {
        $this->connect();
        return $this->included[$path] ?? [];
    }

    /** @return list<string> the paths of the templates that include it themselves */
    public function includers(string $path): array
    {
        $this->connect();
        return array_keys($this->includers[$path] ?? []);
    }

    /** @return array<string, true> the paths of all that a template includes, and its own */
    public function reach(string $path): array
    {
        $this->connect();
        return $this->closure($path, fn(string $each): array => $this->included[$each] ?? []);
    }

    /** @return list<string> the pages in which a template is used: itself, if none includes it */
    public function pages(string $path): array
    {
        $this->connect();
        $all = $this->closure($path, fn(string $each): array => array_keys($this->includers[$each] ?? []));
        $pages = array_filter(array_keys($all), fn(string $each): bool => empty($this->includers[$each]));
        return array_values($pages) ?: [$path];
    }

    /** Returns whether a template is new or includes other files than before. */
    private function scan(string $path): bool
    {
        $open = $this->workspace->open($path);
        $stat = $open ? null : @stat($path);
        $mark = $open ? md5($open->text()) : ($stat ? "$stat[mtime] $stat[size] $stat[ino]" : '');
        $known = $this->names[$path] ?? null;
        if ($known !== null && $known[0] === $mark) {
            return false;
        }
        $isSmall = $open || ($stat && $stat['size'] <= Files::LARGEST && is_file($path));
        $text = $open?->text() ?? ($isSmall ? (string) @file_get_contents($path) : '');
        if (preg_match(self::LOST, $text, $match, PREG_OFFSET_CAPTURE)) {
            $text = substr($text, 0, $match[0][1]);
        }
        preg_match_all(self::TAG, $text, $tags);
        $names = array_map(static fn(string $argument): string => trim($argument, self::BLANKS), $tags[1]);
        $names = array_values(array_unique($names));
        $this->names[$path] = [$mark, $names];
        return $known === null || $known[1] !== $names;
    }

    /** @return array<string, true> */
    private function closure(string $start, callable $next): array
    {
        $all = [$start => true];
        for ($todo = [$start]; $todo;) {
            foreach ($next(array_pop($todo)) as $each) {
                if (!isset($all[$each])) {
                    $all[$each] = true;
                    $todo[] = $each;
                }
            }
        }
        return $all;
    }

    private function connect(): void
    {
        if ($this->includers !== null) {
            return;
        }
        $this->includers = [];
        $this->included = [];
        $unknown = [];
        for ($todo = array_keys($this->names); $todo;) {
            $path = array_pop($todo);
            if (!isset($this->names[$path])) {
                // Not in the project's own folders.
                $this->scan($path);
            }
            $files = $this->names[$path][1] ? $this->folder->files($path) : null;
            foreach ($this->names[$path][1] as $name) {
                $this->link($path, $name, $path, $files) || $unknown[] = [$path, $name];
            }
            foreach ($this->included[$path] ?? [] as $found) {
                isset($this->names[$found]) || $todo[] = $found;
            }
        }
        // What isn't found from the partial itself may lie beside a page that uses it.
        foreach ($unknown as [$path, $name]) {
            foreach ($this->pages($path) as $page) {
                if ($page !== $path && $this->link($path, $name, $page, $this->folder->files($page))) {
                    break;
                }
            }
        }
    }

    private function link(string $path, string $name, string $page, Files $files): bool
    {
        $found = $files->find($name, $page);
        $data = $found === null && $name !== '' ? $this->folder->data($page) : null;
        $value = $data === null ? null : (new Reference($name, 0))->find($data);
        if ($value && is_string($value[0])) {
            $found = $files->find($value[0], $page);
        }
        if ($found === null || is_dir($found)) {
            return false;
        }
        $found = realpath($found) ?: $found;
        if ($found !== $path) {
            $this->includers[$found][$path] = true;
            $this->included[$path][] = $found;
        }
        return true;
    }
}
