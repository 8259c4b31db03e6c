--TEST--
Escaping tags: one whole reference, keys, what finds nothing, the charset settings of PHP
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = ['v' => '<v>', 'a b' => 'blank', "v 'x'" => 'quoted', "'x'" => 'text', 'v w' => 'two', 'none' => [],
    'k' => ['<k>' => 1, "é'" => 2, 'a b' => 3, 7 => 4, '' => 5, "z<\0>" => 6],
    'o' => ['<1>' => ['"2"' => 'x', 3 => 'y']], 'rows' => [['t' => '<t>'], []]];

$set = fn(string $charset, string $template, array $data): Closure => function () use ($charset, $template, $data): ?string {
    $before = ini_set('default_charset', $charset);
    try {
        return template($template, $data, true);
    } finally {
        ini_set('default_charset', $before);
    }
};
$each = fn(string $tag): string => "{dynamic k}{{$tag} [*]}|{/dynamic}";

table([
    ['a blank does not split', '{addslashes a b}{rawurlencode v w}', $d, 'blanktwo'],
    ['quotes mean nothing', "{htmlspecialchars v 'x'}{addslashes 'x'}{addslashes v 'y'}{addslashes a'b}", $d, 'quotedtext'],
    ['missing', 'a{addslashes x}b{htmlentities x}c{htmlspecialchars x::y}d{rawurlencode v::x}e', $d, 'abcde'],
    ['missing in an element', '{dynamic rows}<{htmlspecialchars *::t}{addslashes *::x}{rawurlencode n::*::t}>{/dynamic}', $d,
        '<&lt;t&gt;><>'],
    ['outside every loop', '<{addslashes *}{htmlentities *::v}{htmlspecialchars [*]}{rawurlencode n::[*]}>', $d, '<>'],

    ['keys: addslashes', $each('addslashes'), $d, "<k>|é\\'|a b|7||z<|"],
    ['keys: htmlentities', $each('htmlentities'), $d, "&lt;k&gt;|&Atilde;&copy;'|a b|7||z&lt;|"],
    ['keys: htmlspecialchars', $each('htmlspecialchars'), $d, "&lt;k&gt;|é'|a b|7||z&lt;|"],
    ['keys: rawurlencode', $each('rawurlencode'), $d, '%3Ck%3E|%C3%A9%27|a%20b|7||z%3C|'],
    ['keys of two loops', '{dynamic a,o}{dynamic a::*}{htmlspecialchars a::[*]}{htmlspecialchars [*]}={htmlspecialchars *};{/dynamic}{/dynamic}',
        $d, '&lt;1&gt;&quot;2&quot;=x;&lt;1&gt;3=y;'],
    ['a loop name that holds blanks', '{dynamic a b,o}{dynamic  c ,a b::*}{rawurlencode a b::[*]}{rawurlencode c ::[*]}{/dynamic}{/dynamic}',
        $d, '%3C1%3E%222%22%3C1%3E3'],

    ['ISO-8859-1 data', $set('ISO-8859-1', '{htmlentities v}{htmlspecialchars v}', ['v' => "\xE9<"]), null, "&eacute;&lt;\xE9&lt;"],
    ['ISO-8859-1 reads UTF-8 byte by byte', $set('ISO-8859-1', '{htmlentities v}', ['v' => 'é']), null, '&Atilde;&copy;'],
    ['elements do not care', $set('UTF-8', '{dynamic l}{htmlentities *}{/dynamic}', ['l' => ["\xE9"]]), null, '&eacute;'],
    ['elements do not care', $set('windows-1252', '{dynamic l}{htmlentities *}{/dynamic}{htmlentities v}', ['l' => ["\x80"], 'v' => "\x80"]),
        null, "\x80&euro;"],
]);
?>
--EXPECT--
15 rows
