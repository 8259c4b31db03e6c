<?php

namespace TemplateTool\Console;

/** Waits until something that a command depends on changes. */
final class Watch
{
    private const INTERVAL = 200000;
    private const SMALL = 1 << 20;

    /**
     * Calls $round again and again, whenever a file or folder changes that the last round depends on. Ends only with
     * the program.
     *
     * @param list<string> $known what the first round depends on, as far as that is known
     * @param callable(): list<string> $round tells what it depends on
     */
    public static function forever(array $known, callable $round): never
    {
        while (true) {
            $state = self::state($known);
            $start = time();
            $known = $round();
            // The state from before the reading counts. What has come in with this round may have changed meanwhile.
            foreach (self::state($known) as $file => $now) {
                $state[$file] ??= @filemtime($file) >= $start && !is_dir($file) ? 'unknown' : $now;
            }
            $state = array_intersect_key($state, array_fill_keys($known, true));
            while ($state == self::state($known)) {
                usleep(self::INTERVAL);
            }
        }
    }

    /**
     * @param list<string> $files
     * @return array<string, string> by file
     */
    private static function state(array $files): array
    {
        clearstatcache();
        $state = [];
        foreach ($files as $file) {
            $stat = @stat($file);
            // Times count seconds only; what a small file or a folder holds tells more.
            $hash = match (true) {
                !$stat => '',
                is_dir($file) => implode('/', @scandir($file) ?: []),
                $stat['size'] <= self::SMALL => @hash_file('xxh3', $file),
                default => '',
            };
            $time = $stat && !is_dir($file) ? "$stat[mtime] $stat[size]" : '';
            $state[$file] = $stat ? "$stat[ino] $time $hash" : '';
        }
        return $state;
    }
}
