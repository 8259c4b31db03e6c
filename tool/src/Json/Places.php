<?php

namespace TemplateTool\Json;

/** Where the keys and values of a JSON text stand. */
final class Places
{
    private const TOKEN = '~"(?:[^"\\\\]|\\\\.)*+"|[][{}:,]|[^][{}:,"\s]++~s';

    /** @var array<string, int> by path: the offset of the value, or of the key in front of it */
    private array $offsets = [];

    /** $text: valid JSON. */
    public function __construct(private string $text)
    {
        preg_match_all(self::TOKEN, $text, $tokens, PREG_OFFSET_CAPTURE);
        $path = [];
        $open = [];
        foreach ($tokens[0] as $i => [$token, $offset]) {
            $isObject = end($open) === '{';
            if ($isObject && ($tokens[0][$i + 1][0] ?? '') === ':') {
                $path[count($open) - 1] = (string) json_decode($token);
                $this->offsets[self::key($path)] = $offset;
                continue;
            }
            switch ($token) {
                case ':':
                    break;
                case ',':
                    $isObject || $path[count($open) - 1]++;
                    break;
                case '}':
                case ']':
                    array_pop($open);
                    $path = array_slice($path, 0, count($open));
                    break;
                default:
                    $this->offsets[self::key($path)] ??= $offset;
                    if ($token === '{' || $token === '[') {
                        $open[] = $token;
                        $path[] = 0;
                    }
            }
        }
    }

    /** @param list<string|int> $path keys, from the top; for one that isn't there, the place of what is around it */
    public function of(array $path): int
    {
        while ($path && !isset($this->offsets[self::key($path)])) {
            array_pop($path);
        }
        return $this->offsets[self::key($path)] ?? 0;
    }

    /** What stands at an offset, or ends there: the path of a key, or of an element of a list; null for neither. */
    public function at(int $offset): ?array
    {
        foreach ($this->offsets as $key => $start) {
            if ($start <= $offset && $offset <= $start + $this->lengthAt($start)) {
                return $key === '' ? null : explode("\0", (string) $key);
            }
        }
        return null;
    }

    /** The length of the token that begins at an offset. */
    public function lengthAt(int $offset): int
    {
        return preg_match(self::TOKEN . 'A', $this->text, $token, 0, $offset) ? strlen($token[0]) : 0;
    }

    private static function key(array $path): string
    {
        return implode("\0", $path);
    }
}
