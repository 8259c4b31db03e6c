<?php

namespace TemplateTool\Files;

/** What a command line may name beside files: "-" for the standard input, and pipes, which can be read only once. */
final class Given
{
    public const INPUT = '-';

    private const STREAM = '~^(?:/dev/fd/|/proc/self/fd/)(\d+)$~';

    /** @var array<string, string> what has been read already */
    private static array $read = [];

    /** Whether there is no file behind it that could be read again, watched or mended. */
    public static function isStream(string $path): bool
    {
        return $path === self::INPUT || in_array(@filetype($path), ['fifo', 'socket'], true)
            || (self::wrapper($path) !== null && !is_file($path) && !is_dir($path));
    }

    /** How messages call it. */
    public static function name(string $path): string
    {
        return $path === self::INPUT ? 'standard input' : $path;
    }

    /** All of a stream, whoever asks first; null when reading fails. $most: a text this long is cut behind it. */
    public static function text(string $path, ?int $most = null): ?string
    {
        if (!isset(self::$read[$path])) {
            $text = @file_get_contents(self::wrapper($path) ?? $path, length: $most === null ? null : $most + 1);
            if ($text === false) {
                return null;
            }
            self::$read[$path] = $text;
        }
        return self::$read[$path];
    }

    /** PHP resolves the links that stand for open files, and then finds nothing. */
    private static function wrapper(string $path): ?string
    {
        return match (true) {
            $path === self::INPUT || $path === '/dev/stdin' => 'php://stdin',
            preg_match(self::STREAM, $path, $match) === 1 => "php://fd/$match[1]",
            default => null,
        };
    }
}
