<?php

namespace TemplateTool\Json;

use TemplateTool\Syntax\Source;

/** Decodes JSON, and knows where it is broken, which PHP's own functions don't tell. */
final class JsonText
{
    private const TOKEN = '~[ \t\n\r]*+(?:(?<word>true|false|null|-?(?:0|[1-9]\d*)(?:\.\d+)?(?:[eE][+-]?\d+)?)(?![\w.])'
        . '|(?<string>"(?:[^"\\\\\x00-\x1f]|\\\\(?:["\\\\/bfnrt]|u[0-9a-fA-F]{4}))*+")|(?<sign>[][{}:,])|\z)~A';

    /** @throws Broken naming the place */
    public static function decode(string $text, string $name): mixed
    {
        $value = json_decode($text, true);
        $error = json_last_error();
        if ($error === JSON_ERROR_NONE) {
            return $value;
        }
        $offset = match ($error) {
            JSON_ERROR_UTF8 => self::firstOutsideUtf8($text),
            JSON_ERROR_SYNTAX, JSON_ERROR_CTRL_CHAR, JSON_ERROR_STATE_MISMATCH => self::firstUnexpected($text),
            default => null,
        };
        if ($offset === null) {
            throw new Broken("$name: broken JSON: " . ($error === JSON_ERROR_DEPTH
                ? 'nested deeper than 512 levels' : lcfirst(json_last_error_msg())));
        }
        [$line, $column] = (new Source($name, $text))->position($offset);
        preg_match('/\S.{0,14}/u', $text, $next, 0, $offset);
        $what = match (true) {
            $error === JSON_ERROR_UTF8 => 'this is not UTF-8',
            $offset >= strlen($text) => 'the text ends too early',
            default => 'unexpected ' . ($next[0] ?? ''),
        };
        throw new Broken("$name:$line:$column: broken JSON: $what");
    }

    /** The offset of the first token that can't stand where it stands. */
    private static function firstUnexpected(string $text): int
    {
        $open = [];
        // What may come next: "v"alue, "k"ey, ":", ",", an end "e", nothing "".
        $expected = 'v';
        for ($offset = 0; preg_match(self::TOKEN, $text, $token, PREG_UNMATCHED_AS_NULL, $offset);) {
            $kind = isset($token['word']) ? 'w' : (isset($token['string']) ? 's' : $token['sign'] ?? '');
            $isValue = str_contains($expected, 'v') && $kind !== '' && str_contains('ws[{', $kind);
            $isKey = str_contains($expected, 'k') && $kind === 's';
            $isEnd = str_contains($expected, 'e') && $kind === (end($open) === '{' ? '}' : ']');
            $isSign = $kind !== '' && str_contains(':,', $kind) && str_contains($expected, $kind);
            if (!$isValue && !$isKey && !$isEnd && !$isSign) {
                break;
            }
            $offset += strlen($token[0]);
            if ($isEnd) {
                array_pop($open);
            } elseif ($kind === '[' || $kind === '{') {
                $open[] = $kind;
            }
            $expected = match (true) {
                $isKey => ':',
                $kind === ':' => 'v',
                $kind === ',' => end($open) === '{' ? 'k' : 'v',
                $kind === '{' => 'ke',
                $kind === '[' => 've',
                default => $open ? ',e' : '',
            };
        }
        return $offset + strspn($text, " \t\n\r", $offset);
    }

    private static function firstOutsideUtf8(string $text): int
    {
        $good = '~(?:[\x00-\x7F]++|[\xC2-\xDF][\x80-\xBF]|\xE0[\xA0-\xBF][\x80-\xBF]|[\xE1-\xEC\xEE\xEF][\x80-\xBF]{2}'
            . '|\xED[\x80-\x9F][\x80-\xBF]|\xF0[\x90-\xBF][\x80-\xBF]{2}|[\xF1-\xF3][\x80-\xBF]{3}'
            . '|\xF4[\x80-\x8F][\x80-\xBF]{2})*+~A';
        preg_match($good, $text, $match);
        return strlen($match[0]);
    }
}
