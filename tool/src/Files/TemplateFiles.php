<?php

namespace TemplateTool\Files;

/** The templates that files and folders stand for. */
final class TemplateFiles
{
    /**
     * @param list<string> $paths files, whatever their names, and folders
     * @param list<string> $patterns for the names of files in folders
     * @return list<string> with folders that can't be read
     * @throws Unreadable for a folder without templates
     */
    public static function in(array $paths, array $patterns): array
    {
        $files = [];
        foreach ($paths as $path) {
            $found = self::below([$path], $patterns);
            if (!$found) {
                throw new Unreadable($path, 'no file here is named like ' . implode(' or ', $patterns) . ' (--name)');
            }
            array_push($files, ...$found);
        }
        return array_values(array_unique($files));
    }

    /**
     * @param list<string> $paths
     * @param list<string> $patterns
     * @return list<string> with folders that can't be read
     */
    public static function below(array $paths, array $patterns): array
    {
        $files = [];
        foreach ($paths as $path) {
            array_push($files, ...(is_dir($path) ? self::folder(rtrim($path, '/') ?: '/', $patterns) : [$path]));
        }
        return array_values(array_unique($files));
    }

    private static function folder(string $folder, array $patterns): array
    {
        $files = [];
        $entries = @scandir($folder);
        if ($entries === false) {
            return [$folder];
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
