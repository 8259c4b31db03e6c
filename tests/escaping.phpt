--TEST--
Escaping tags: data is escaped while reading in the default charset, elements in ISO-8859-1 while rendering
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$a = 'addslashes';
$e = 'htmlentities';
$s = 'htmlspecialchars';
$u = 'rawurlencode';
$referenced = '<r>';
$object = new SplFileInfo("<'>");

// [what, value, tag, text when read from the data, text when read from an element]
$sides = [
    ['quotes and backslashes', "a'b\"c\\d", $a, "a\\'b\\\"c\\\\d", "a\\'b\\\"c\\\\d"],
    ['zero byte', "a'\0b", $a, "a\\'\\0b", "a\\'"],
    ['zero byte', "<\0>", $s, '&lt;', '&lt;'],
    ['zero byte', "é\0>", $e, '&eacute;', '&Atilde;&copy;'],
    ['zero byte', "a \0b", $u, 'a%20%00b', 'a%20'],
    ['markup', "<a href=\"x\">'&</a>", $s, "&lt;a href=&quot;x&quot;&gt;'&amp;&lt;/a&gt;", "&lt;a href=&quot;x&quot;&gt;'&amp;&lt;/a&gt;"],
    ['markup', "<'\">", $e, "&lt;'&quot;&gt;", "&lt;'&quot;&gt;"],
    ['entities again', '&amp; &#39;', $s, '&amp;amp; &amp;#39;', '&amp;amp; &amp;#39;'],
    ['entities again', '&lt;', $e, '&amp;lt;', '&amp;lt;'],
    ['two bytes', 'é<', $s, 'é&lt;', 'é&lt;'],
    ['two and three bytes', 'éα€', $e, '&eacute;&alpha;&euro;', "&Atilde;&copy;&Icirc;&plusmn;&acirc;\x82&not;"],
    ['no UTF-8', "<\xE9>", $e, '', '&lt;&eacute;&gt;'],
    ['no UTF-8', "<\xE9>", $s, '', "&lt;\xE9&gt;"],
    ['no UTF-8', "\xE9'", $a, "\xE9\\'", "\xE9\\'"],
    ['high bytes', "\x80\x9F\xA0\xFF", $e, '', "\x80\x9F&nbsp;&yuml;"],
    ['URL', "a b/c?d=é&~-_.+\n", $u, 'a%20b%2Fc%3Fd%3D%C3%A9%26~-_.%2B%0A', 'a%20b%2Fc%3Fd%3D%C3%A9%26~-_.%2B%0A'],
    ['empty', '', $e, '', ''],
    ['integer', -5, $a, '', '-5'],
    ['float', 1e100, $u, '', '1.0E%2B100'],
    ['not a number', NAN, $u, '', 'NAN'],
    ['not a number', NAN, $e, '', 'NAN'],
    ['infinite', -INF, $u, '', '-INF'],
    ['true', true, $s, '', '1'],
    ['false', false, $s, '', ''],
    ['null', null, $e, '', ''],
    ['array', [], $s, '', noted('Array', 'Array to string conversion')],
    ['object', $object, $s, '', "&lt;'&gt;"],
    ['object', $object, $a, '', "<\\'>"],
    ['object without text', new stdClass(), $u, '', fails('Error: Object of class stdClass could not be converted to string')],
    ['reference', [&$referenced], $s, '', '&lt;r&gt;'],
];
$rows = [];
foreach ($sides as [$what, $value, $tag, $read, $rendered]) {
    $data = ['l' => $value === [] || !is_array($value) ? [$value] : $value];
    $rows[] = ["$tag, $what, data", "{{$tag} l::0}", $data, $read];
    $rows[] = ["$tag, $what, data in a loop", "{dynamic l}{{$tag} l::0}{/dynamic}", $data, $read];
    $rows[] = ["$tag, $what, element", "{dynamic n,l}{{$tag} *}{{$tag} z::*}{/dynamic}", $data, $rendered];
}

// Every byte, and special bytes at every place, come out as PHP's own functions have them.
$texts = array_map('chr', range(1, 255));
foreach (['<', '&', '"', "'", '\\', '>', ' ', '~', "\xE9", 'é'] as $special) {
    for ($place = 0; $place < 36; $place++) {
        $texts[] = str_repeat('x', $place) . $special . str_repeat('y', 35 - $place);
        $texts[] = str_repeat('x', $place) . $special;
    }
}
$latin = fn(callable $escape): Closure => fn(string $text): string => $escape($text, ENT_COMPAT, 'ISO-8859-1');
$utf8 = fn(callable $escape): Closure => fn(string $text): string => $escape($text, ENT_COMPAT);
foreach ([[$a, $a, $a], [$u, $u, $u], [$e, $utf8($e), $latin($e)], [$s, $utf8($s), $latin($s)]] as [$tag, $reading, $rendering]) {
    $read = implode('', array_map(fn($place) => "{{$tag} l::$place}|", array_keys($texts)));
    $rows[] = ["$tag, all bytes, data", $read, ['l' => $texts], implode('|', array_map($reading, $texts)) . '|'];
    $rows[] = ["$tag, all bytes, element", "{dynamic l}{{$tag} *}|{/dynamic}", ['l' => $texts], implode('|', array_map($rendering, $texts)) . '|'];
    $rows[] = ["$tag, all bytes, key", "{dynamic l}{{$tag} [*]}|{/dynamic}", ['l' => array_fill_keys($texts, 1)],
        implode('|', array_map($rendering, array_unique($texts))) . '|'];
}
table($rows);

$d = ['v' => '<v>', 'a b' => 'blank', "v 'x'" => 'quoted', "'x'" => 'text', 'k' => ['<k>' => 1, "é'" => 2, 'a b' => 3, -7 => 4, '' => 5, "z<\0>" => 6],
    'o' => ['<1>' => ['"2"' => 'x', 3 => 'y']], 'rows' => [['t' => '<t>'], []]];
$each = fn(string $tag): string => "{dynamic k}{{$tag} [*]}|{/dynamic}";
$in = fn(string $charset, string $template, array $data): Closure => function () use ($charset, $template, $data): ?string {
    ini_set('default_charset', $charset);
    $text = template($template, $data, true);
    ini_restore('default_charset');
    return $text;
};
$lengths = range(0, 40);
$ending = fn(string $end): array => array_map(fn($n) => str_repeat('a', $n) . $end, $lengths);
table([
    ['the last byte of a text', '{dynamic l}{htmlspecialchars *}{*};{/dynamic}' . implode(array_map(fn($n) => "{htmlspecialchars l::$n};", $lengths)),
        ['l' => $ending('&')], implode(array_map(fn($n) => str_repeat('a', $n) . '&amp;' . str_repeat('a', $n) . '&;', $lengths)) . implode(';', $ending('&amp;')) . ';'],
    ['a zero byte as the last', '{dynamic l}{htmlspecialchars *}{*};{/dynamic}' . implode(array_map(fn($n) => "{htmlspecialchars l::$n};", $lengths)),
        ['l' => $ending("\0")], implode(array_map(fn($n) => str_repeat('a', 2 * $n) . ';', $lengths)) . implode(';', $ending('')) . ';'],
    ['one whole reference', "{addslashes a b}{htmlspecialchars v 'x'}{addslashes 'x'}{addslashes v 'y'}{addslashes a'b}", $d, 'blankquotedtext'],
    ['missing', 'a{addslashes x}b{htmlentities x}c{htmlspecialchars x::y}d{rawurlencode v::x}e', $d, 'abcde'],
    ['missing in an element', '{dynamic rows}<{htmlspecialchars *::t}{addslashes *::x}{rawurlencode n::*::t}>{/dynamic}', $d, '<&lt;t&gt;><>'],
    ['outside every loop', '<{addslashes *}{htmlentities *::v}{htmlspecialchars [*]}{rawurlencode n::[*]}>', $d, '<>'],
    ['keys: addslashes', $each($a), $d, "<k>|é\\'|a b|-7||z<|"],
    ['keys: htmlentities', $each($e), $d, "&lt;k&gt;|&Atilde;&copy;'|a b|-7||z&lt;|"],
    ['keys: rawurlencode', $each($u), $d, '%3Ck%3E|%C3%A9%27|a%20b|-7||z%3C|'],
    ['keys of two loops', '{dynamic a,o}{dynamic a::*}{htmlspecialchars a::[*]}{htmlspecialchars [*]}{htmlspecialchars *};{/dynamic}{/dynamic}', $d,
        '&lt;1&gt;&quot;2&quot;x;&lt;1&gt;3y;'],
    ['a loop name that holds blanks', '{dynamic a b,o}{dynamic  c ,a b::*}{rawurlencode a b::[*]}{rawurlencode c ::[*]}{/dynamic}{/dynamic}', $d,
        '%3C1%3E%222%22%3C1%3E3'],
    ['ISO-8859-1', $in('ISO-8859-1', '{htmlentities v}{htmlspecialchars v}', ['v' => "\xE9<é"]), null, "&eacute;&lt;&Atilde;&copy;\xE9&lt;é"],
    ['elements do not care', $in('windows-1252', '{dynamic l}{htmlentities *}{/dynamic}{htmlentities v}', ['l' => ["\x80"], 'v' => "\x80"]), null,
        "\x80&euro;"],
]);
?>
--EXPECT--
102 rows
13 rows
