--TEST--
Escaping tags: data escaped while reading in the default charset, elements in ISO-8859-1 while rendering
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

class Markup
{
    public function __toString(): string
    {
        return "<'>";
    }
}

$referenced = '<r>';
$array = 'Array to string conversion';
$a = 'addslashes';
$e = 'htmlentities';
$s = 'htmlspecialchars';
$u = 'rawurlencode';

// [what, value, tag, text when read from the data, text when read from an element]
$sides = [
    ['quotes and backslashes', "a'b\"c\\d", $a, "a\\'b\\\"c\\\\d", "a\\'b\\\"c\\\\d"],
    ['zero byte', "a'\0b", $a, "a\\'\\0b", "a\\'"],
    ['zero byte', "<\0>", $s, '&lt;', '&lt;'],
    ['zero byte', "é\0>", $e, '&eacute;', '&Atilde;&copy;'],
    ['zero byte', "a \0b", $u, 'a%20%00b', 'a%20'],
    ['zero byte alone', "\0", $u, '%00', ''],
    ['markup', "<a href=\"x\">'b' & c</a>", $s, "&lt;a href=&quot;x&quot;&gt;'b' &amp; c&lt;/a&gt;",
        "&lt;a href=&quot;x&quot;&gt;'b' &amp; c&lt;/a&gt;"],
    ['markup', "<'\">", $e, "&lt;'&quot;&gt;", "&lt;'&quot;&gt;"],
    ['entities again', '&amp; &#39; &eacute;', $s, '&amp;amp; &amp;#39; &amp;eacute;', '&amp;amp; &amp;#39; &amp;eacute;'],
    ['entities again', '&lt;', $e, '&amp;lt;', '&amp;lt;'],
    ['two bytes', 'é<', $s, 'é&lt;', 'é&lt;'],
    ['two bytes', 'é', $e, '&eacute;', '&Atilde;&copy;'],
    ['three bytes', '€', $e, '&euro;', "&acirc;\x82&not;"],
    ['Greek', 'α', $e, '&alpha;', '&Icirc;&plusmn;'],
    ['no UTF-8', "<\xE9>", $e, '', '&lt;&eacute;&gt;'],
    ['no UTF-8', "<\xE9>", $s, '', "&lt;\xE9&gt;"],
    ['no UTF-8', "\xE9'", $a, "\xE9\\'", "\xE9\\'"],
    ['high bytes', "\x80\x9F\xA0\xFF", $e, '', "\x80\x9F&nbsp;&yuml;"],
    ['URL', "a b/c?d=é&~-_.+\n", $u, 'a%20b%2Fc%3Fd%3D%C3%A9%26~-_.%2B%0A', 'a%20b%2Fc%3Fd%3D%C3%A9%26~-_.%2B%0A'],
    ['nothing to escape', 'plain', $s, 'plain', 'plain'],
    ['empty', '', $e, '', ''],
    ['long', str_repeat('<é', 3000), $e, str_repeat('&lt;&eacute;', 3000), str_repeat('&lt;&Atilde;&copy;', 3000)],
    ['integer', -5, $a, '', '-5'],
    ['float', 1e100, $u, '', '1.0E%2B100'],
    ['true', true, $s, '', '1'],
    ['false', false, $s, '', ''],
    ['null', null, $e, '', ''],
    ['array', [], $s, '', noted('Array', $array)],
    ['object', new Markup(), $s, '', "&lt;'&gt;"],
    ['object', new Markup(), $a, '', "<\\'>"],
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
table($rows);
?>
--EXPECT--
96 rows
