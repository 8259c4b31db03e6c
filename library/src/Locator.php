<?php

namespace Template;

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Rules\Catalogue;

/**
 * Finds the place in a template that the engine has refused, by checking it as "template check" does.
 *
 * @internal
 */
final class Locator
{
    private Files $files;

    /** @param list<string> $folders the include path */
    public function __construct(private array $folders)
    {
    }

    /** $source: the name of the template, or its text. $data: what it was to be rendered with. */
    public function error(string $message, string $source, array $data, bool $isText): TemplateError
    {
        [$finding, $file] = Quiet::run(function () use ($message, $source, $data, $isText): array {
            $this->files = new Files($this->folders);
            $path = $isText ? null : $this->files->find($source, '') ?? '';
            $finding = $this->finding($message, $source, $data, $path);
            return [$finding, $finding === null ? $this->namedFile($message) : $finding->source->path];
        });
        [$callersFile, $callersLine] = self::caller();
        return new TemplateError(
            $message,
            $file ?: $callersFile,
            $file ? $finding->line ?? 0 : $callersLine,
            $isText ? null : $source,
            $finding?->line,
            $finding?->column,
            array_map(self::withRealFile(...), $finding->includedFrom ?? [])
        );
    }

    /** $path: of the file that was rendered, empty when there is none; null for a text. */
    private function finding(string $message, string $source, array $data, ?string $path): ?Finding
    {
        $memory = Quiet::memory() - ($path === null ? Files::memoryOf($source) : 0);
        if ($path === '' || $memory < 0) {
            return null;
        }
        $checker = new Checker(new Options($this->folders, Catalogue::names(), data: $data, memory: $memory));
        foreach ($path === null ? $checker->checkText($source, '') : $checker->checkFiles([$path]) as $finding) {
            if ($finding->isError() && !$finding->isUnreadable() && $this->isAbout($message, $finding)) {
                return $finding;
            }
        }
        return null;
    }

    /** Whether a message is a finding's, and ends in the name of its file. */
    private function isAbout(string $message, Finding $finding): bool
    {
        $said = self::withoutPercent($message);
        $found = self::withoutPercent($finding->message);
        if (!str_starts_with($said, "$found in ")) {
            return $said === $found;
        }
        $name = substr($said, strlen("$found in "));
        $source = $finding->source;
        if ($source->path === '') {
            return $name === self::withoutPercent(explode("\0", $source->text, 2)[0]);
        }
        return $name !== '' && (realpath((string) $this->files->find($name, '')) === $source->path
            || str_ends_with(self::withoutPercent($source->path), '/' . ltrim($name, './')));
    }

    /** The file that the end of a message names, with its links resolved. */
    private function namedFile(string $message): ?string
    {
        if (str_starts_with($message, 'Could not open file ')) {
            return null;
        }
        for ($end = 0; ($end = strpos($message, ' in ', $end)) !== false;) {
            $end += strlen(' in ');
            $path = $this->files->find(substr($message, $end), '');
            if ($path !== null && is_file($path)) {
                return realpath($path);
            }
        }
        return null;
    }

    /** @param array{file: string, line: int, column: int} $place */
    private static function withRealFile(array $place): array
    {
        return $place['file'] === '' ? $place : ['file' => realpath($place['file']) ?: $place['file']] + $place;
    }

    /** A message is a format to PHP, which makes one percent sign of two. */
    private static function withoutPercent(string $text): string
    {
        return str_replace('%', '', $text);
    }

    /** @return array{string, int} file and line of the code that has called the library */
    private static function caller(): array
    {
        foreach (debug_backtrace(DEBUG_BACKTRACE_IGNORE_ARGS) as $frame) {
            if (isset($frame['file']) && !str_starts_with($frame['file'], __DIR__ . '/')) {
                return [$frame['file'], $frame['line']];
            }
        }
        return [__FILE__, __LINE__];
    }
}
