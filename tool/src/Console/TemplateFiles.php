<?php

namespace TemplateTool\Console;

/** The templates that the paths of a command line stand for. */
final class TemplateFiles
{
    /**
     * @param list<string> $paths files, whatever their names, and folders
     * @param list<string> $patterns for the names of files in folders
     * @return list<string>
     */
    public static function in(array $paths, array $patterns): array
    {
        $files = [];
        foreach ($paths as $path) {
            if (!is_dir($path)) {
                $files[] = $path;
                continue;
            }
            $found = self::folder(rtrim($path, '/') ?: '/', $patterns);
            if (!$found) {
                throw new Failure("$path: no file here is named like " . implode(' or ', $patterns) . ' (--name)');
            }
            array_push($files, ...$found);
        }
        return array_values(array_unique($files));
    }

    private static function folder(string $folder, array $patterns): array
    {
        $files = [];
        $entries = @scandir($folder);
        if ($entries === false) {
            throw new Failure("$folder: permission denied");
        }
        foreach ($entries as $entry) {
            $path = $folder === '.' ? $entry : rtrim($folder, '/') . "/$entry";
            if ($entry[0] === '.' || $entry === 'node_modules') {
                continue;
            }
            if (is_dir($path) && !is_link($path)) {
                array_push($files, ...self::folder($path, $patterns));
            } elseif (array_filter($patterns, fn($pattern): bool => fnmatch($pattern, $entry)) && is_file($path)) {
                $files[] = $path;
            }
        }
        return $files;
    }
}
