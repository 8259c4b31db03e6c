<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Input\InputInterface;

/** Where included files are looked for: where the options say, else in the folders of the command line. */
final class IncludePath
{
    // As Check\Options has it.
    private const OF_PAGE = '';

    /**
     * @param list<string> $paths
     * @return list<string>
     */
    public static function of(InputInterface $input, array $paths): array
    {
        $folders = $input->getOption('include-path');
        foreach ($folders as $folder) {
            if (!is_dir($folder)) {
                throw new Failure("--include-path $folder: no such folder");
            }
        }
        // PHP's own setting comes last; its "." is the current folder.
        $given = array_filter($paths, static fn(string $path): bool => $path !== '-' && is_dir($path));
        $folders = $folders ?: [...$given, self::OF_PAGE];
        return array_values(array_unique([...$folders, ...explode(PATH_SEPARATOR, get_include_path())]));
    }
}
