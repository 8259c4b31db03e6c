<?php

namespace TemplateTool\Project;

use TemplateTool\Files\Files;
use TemplateTool\Files\Unreadable;

/** Which files include which: seen in their texts alone, so that a large project is gone through fast. */
final class Includes
{
    private const TAG = '~\{\{(*SKIP)(*FAIL)|\{include([^{}]*)\}~';

    /** @var array<string, list<string>> by path with all links resolved: the paths of what a file includes itself */
    private array $below = [];

    /** @var array<string, list<string>> the other way round */
    private array $above = [];

    /**
     * $data: gives the sample data of a file, or null.
     *
     * @param list<string> $paths with what they include, all that takes part
     * @param callable(string): ?array $data
     */
    public function __construct(array $paths, private Files $files, private $data)
    {
        for ($waiting = $paths; $waiting;) {
            $path = array_pop($waiting);
            $real = realpath($path) ?: $path;
            if (isset($this->below[$real])) {
                continue;
            }
            $this->below[$real] = $this->includedBy($path);
            foreach ($this->below[$real] as $included) {
                $this->above[$included][] = $real;
                $waiting[] = $included;
            }
        }
    }

    /** @param list<string> $paths @return list<string> these and all that they include, directly or not */
    public function below(array $paths): array
    {
        return self::reached($paths, $this->below);
    }

    /** @param list<string> $paths @return list<string> these and all that include them, directly or not */
    public function above(array $paths): array
    {
        return self::reached($paths, $this->above);
    }

    public function isIncluded(string $path): bool
    {
        return array_diff($this->above[$path] ?? [], [$path]) !== [];
    }

    /** @return list<string> */
    private function includedBy(string $path): array
    {
        try {
            $text = $this->files->read($path)->text;
        } catch (Unreadable) {
            return [];
        }
        preg_match_all(self::TAG, $text, $matches);
        $paths = [];
        foreach (array_unique(array_map('trim', $matches[1] ?? [])) as $argument) {
            $found = $this->files->find($this->name($argument, $path), $path);
            if ($found !== null && is_file($found)) {
                $paths[] = realpath($found);
            }
        }
        return $paths;
    }

    private function name(string $argument, string $path): string
    {
        $value = ($this->data)($path);
        foreach ($value === null ? [] : explode('::', $argument) as $index) {
            $value = is_array($value) ? $value[$index] ?? null : null;
        }
        return is_string($value) ? $value : $argument;
    }

    private static function reached(array $paths, array $steps): array
    {
        $reached = [];
        while ($paths) {
            $path = array_pop($paths);
            if (!isset($reached[$path])) {
                $reached[$path] = true;
                array_push($paths, ...($steps[$path] ?? []));
            }
        }
        return array_map(strval(...), array_keys($reached));
    }
}
