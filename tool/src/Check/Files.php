<?php

namespace TemplateTool\Check;

/** Finds and reads template files. */
final class Files
{
    public const LARGEST = 8 << 20;

    /** @var array<string, ?string> */
    private array $found = [];

    /** @var array<string, true> */
    private array $looked = [];

    /**
     * $besidePage: whether the folder of the page counts as the last of the include path.
     *
     * @param list<string> $includePath
     */
    public function __construct(private array $includePath, private bool $besidePage)
    {
    }

    /**
     * The path under which an include of this name opens a file or a folder; null when there is none.
     * $page: the path of the template that the chain of includes begins with; empty when it is no file.
     */
    public function find(string $name, string $page): ?string
    {
        $folder = $this->besidePage && $page !== '' ? dirname($page) : '';
        $key = "$folder\0$name";
        return array_key_exists($key, $this->found)
            ? $this->found[$key]
            : $this->found[$key] = $this->search($name, $folder);
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

    /** How the file would be named in a call or an include tag: relative to the include path, if it lies there. */
    public function nameOf(string $path): string
    {
        foreach ([...$this->includePath, ...($this->besidePage ? [dirname($path)] : [])] as $folder) {
            $folder = realpath($folder) . '/';
            if (str_starts_with($path, $folder)) {
                return substr($path, strlen($folder));
            }
        }
        return $path;
    }

    /** @throws Unreadable */
    public function read(string $path): Source
    {
        $problem = match (true) {
            str_contains($path, "\0") => 'no file has such a name',
            !file_exists($path) => 'no such file',
            is_dir($path) => 'this is a folder',
            !is_file($path) => 'not a plain file',
            !is_readable($path) => 'permission denied',
            filesize($path) > self::LARGEST => sprintf(
                'too large for a template: %d MB; the limit is %d MB',
                filesize($path) >> 20,
                self::LARGEST >> 20
            ),
            default => null,
        };
        $text = $problem === null ? @file_get_contents($path) : '';
        if ($text === false) {
            $problem = 'reading failed';
        } elseif (str_contains($text, "\0")) {
            $problem = sprintf('not a text file: there is a NUL byte at offset %d', strpos($text, "\0"));
        }
        if ($problem !== null) {
            throw new Unreadable("$path: $problem");
        }
        return new Source($path, $text, realpath($path));
    }

    private function search(string $name, string $pageFolder): ?string
    {
        if ($name === '' || str_contains($name, "\0") || self::isStream($name)) {
            return null;
        }
        $folders = [...$this->includePath, ...($pageFolder !== '' ? [$pageFolder] : [])];
        $isFixed = preg_match('~^(?:/|\.\.?/)~', $name) === 1;
        foreach ($isFixed ? [''] : $folders as $folder) {
            $path = $isFixed ? $name : preg_replace('~^(?:\./+)+~', '', rtrim($folder, '/') . "/$name");
            $this->looked[$path] = true;
            if (@file_exists($path)) {
                return $path;
            }
        }
        return null;
    }
}
