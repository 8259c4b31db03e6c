<?php

namespace TemplateTool\Server;

/** Files as the protocol names them. Of a text that is no file the address itself takes the place of a path. */
final class Uri
{
    private const FILE = 'file://';

    public static function ofPath(string $path): string
    {
        return self::isAddress($path)
            ? $path
            : self::FILE . implode('/', array_map(rawurlencode(...), explode('/', $path)));
    }

    /** The path, with its links resolved where there is such a file. */
    public static function path(string $uri): string
    {
        if (strncasecmp($uri, self::FILE, strlen(self::FILE)) !== 0) {
            return $uri;
        }
        $path = rawurldecode(preg_replace('~^[^/]*~', '', substr($uri, strlen(self::FILE))));
        $path = strstr($path, "\0", true) ?: $path;
        return @realpath($path) ?: $path;
    }

    public static function isFile(string $uri): bool
    {
        return strncasecmp($uri, self::FILE, strlen(self::FILE)) === 0;
    }

    private static function isAddress(string $path): bool
    {
        return preg_match('~^[a-z][a-z0-9+.-]*:~i', $path) === 1;
    }
}
