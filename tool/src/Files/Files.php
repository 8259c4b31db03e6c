<?php

namespace TemplateTool\Files;

use TemplateTool\Syntax\Source;

/** Finds and reads template files. */
final class Files
{
    public const LARGEST = 8000000;

    // What a check takes at most, in bytes of memory: each tag can have a text, a finding and a warning of its own.
    private const MEMORY_OF_TAG = 4000;
    private const MEMORY_OF_BYTE = 40;

    /** @var array<string, ?string> */
    private array $found = [];

    /** @var array<string, true> */
    private array $looked = [];

    /**
     * $includePath, $memory: as in Options. $texts: as in Checker.
     *
     * @param list<string> $includePath
     * @param array<string, string> $texts
     */
    public function __construct(private array $includePath, private array $texts = [], private ?int $memory = null)
    {
    }

    /** How many bytes of memory the check of a text takes at most. */
    public static function memoryOf(string $text): int
    {
        return self::MEMORY_OF_BYTE * strlen($text) + self::MEMORY_OF_TAG * substr_count($text, '{');
    }

    /**
     * The path under which an include of this name opens a file or a folder; null when there is none.
     * $page: the path of the template that the chain of includes begins with; empty when it is no file.
     */
    public function find(string $name, string $page): ?string
    {
        $folders = $this->folders($page);
        $key = implode("\0", [...$folders, $name]);
        return array_key_exists($key, $this->found)
            ? $this->found[$key]
            : $this->found[$key] = $this->search($name, $folders);
    }

    /** @return list<string> all paths that were looked at, whether something was there or not */
    public function looked(): array
    {
        return array_keys($this->looked);
    }

    /** Whether a name is one for a stream wrapper. Such includes are never followed: they may do anything. */
    public static function isStream(string $name): bool
    {
        return preg_match('~^(?:[a-z][a-z0-9+.-]*://|data:)~i', $name) === 1;
    }

    /**
     * How a page can be named in a call or an include tag: relative to the folders in which it lies.
     *
     * @return non-empty-list<string>
     */
    public function namesOf(string $path): array
    {
        $names = [];
        foreach ($this->folders($path) as $folder) {
            $folder = rtrim((string) realpath($folder), '/') . '/';
            if ($folder !== '/' && str_starts_with($path, $folder)) {
                $names[] = substr($path, strlen($folder));
            }
        }
        return [...$names, $path];
    }

    /** Why a path can't be opened for reading; null when it can. */
    public static function problem(string $path): ?string
    {
        return match (true) {
            str_contains($path, "\0") => 'no file has such a name',
            !file_exists($path) => 'no such file',
            !is_readable($path) => 'permission denied',
            is_dir($path) => 'this is a folder',
            default => null,
        };
    }

    /** Why a text is hardly a template; null when it may be one. */
    public static function textProblem(string $text): ?string
    {
        $offset = strpos($text, "\0");
        return $offset === false ? null : "not a text file: there is a NUL byte at offset $offset";
    }

    private static function sizeProblem(int $bytes): ?string
    {
        $sizes = [$bytes / 1e6, self::LARGEST / 1e6];
        return $bytes > self::LARGEST ? vsprintf('too large for a template: %.1f MB; the limit is %.1f MB', $sizes) : null;
    }

    /** Takes what a text needs of the memory. */
    private function memoryProblem(string $text): ?string
    {
        if ($this->memory === null) {
            return null;
        }
        $left = $this->memory - self::memoryOf($text);
        if ($left < 0) {
            return 'there may not be memory enough for it';
        }
        $this->memory = $left;
        return null;
    }

    /** A file that the command line names, or what it names in place of one. @throws Unreadable */
    public function readGiven(string $path): Source
    {
        if (!Given::isStream($path)) {
            return $this->read($path);
        }
        $name = Given::name($path);
        $text = Given::text($path, self::LARGEST);
        $problem = $text === null ? 'reading failed' : self::sizeProblem(strlen($text)) ?? self::textProblem($text);
        if ($problem !== null) {
            throw new Unreadable($name, $problem);
        }
        return new Source($name, $text, $path);
    }

    /** @throws Unreadable */
    public function read(string $path): Source
    {
        $real = realpath($path) ?: $path;
        $text = $this->texts[$real] ?? null;
        $problem = match (true) {
            $text !== null => self::sizeProblem(strlen($text)),
            self::problem($path) !== null => self::problem($path),
            !is_file($path) => 'not a plain file',
            default => self::sizeProblem((int) filesize($path)),
        };
        $text ??= $problem === null ? @file_get_contents($path) : '';
        $problem ??= $text === false ? 'reading failed' : self::textProblem($text) ?? $this->memoryProblem($text);
        if ($problem !== null) {
            throw new Unreadable($path, $problem);
        }
        return new Source($path, $text, $real);
    }

    /** @return list<string> the include path for a page */
    public function folders(string $page): array
    {
        $folders = [];
        foreach ($this->includePath as $folder) {
            if ($folder !== '' || $page !== '') {
                $folders[] = $folder === '' ? dirname($page) : $folder;
            }
        }
        return $folders;
    }

    /** @param list<string> $folders */
    private function search(string $name, array $folders): ?string
    {
        if ($name === '' || str_contains($name, "\0") || self::isStream($name)) {
            return null;
        }
        $isFixed = preg_match('~^(?:/|\.\.?/)~', $name) === 1;
        foreach ($isFixed ? [''] : $folders as $folder) {
            $path = $isFixed ? $name : preg_replace('~^(?:\./+)+~', '', rtrim($folder, '/') . "/$name");
            $this->looked[$path] = true;
            if (@file_exists($path) || isset($this->texts[$path])) {
                return $path;
            }
        }
        return null;
    }
}
