--TEST--
Braces: escapes, what opens a tag, a brace inside a tag, tags cut off by the end of input
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['part.tpl' => 'P']);
$d = ['v' => 'V', 'é' => 'E', 'v{{' => 'two', 'list' => ['a', 'b'], 'w' => '{{v}} {v} }}'];
$open = "': could not find second ' as the last character in @";

table([
    ['nothing', '', $d, ''],
    ['no brace', "line\nline\t\x01\xff", $d, "line\nline\t\x01\xff"],
    ['doubled', 'a{{b}}c {{{{v}}}} {{} {{}} {{{v}}}', $d, 'a{b}c {{v}} {} {} {V}'],
    ['closing', 'a}b a}}b a}}}b a}}}}b', $d, 'a}b a}b a}}b a}}b'],
    ['closing before a tag', '}{v} }}{v} }}}{v}', $d, '}V }V }}V'],
    ['closing behind a tag', '{v}} {v}}} {v}}}} {}}}', $d, 'V} V} V}} {}}'],
    ['white space behind a brace', "x { y{\t{\n{\r{ {v}{\n{{v}} {{{ v} { }", $d, "x { y{\t{\n{\r{ V{\n{v} {{ v} { }"],
    ['only opening', '{', $d, '{'],
    ['three opening', '{{{', $d, '{{'],
    ['only closing', '}', $d, '}'],
    ['opening at the end', '{v}{', $d, 'V{'],
    ['closing at the end', '{v}x}', $d, 'Vx}'],
    ['other white space opens a tag', "{\vv}{\fv}", $d, 'VV'],
    ['control and high bytes open a tag', "{\x01}{é}{\x80}{\xA0v}", $d, "{\x01}E{\x80}{\xA0v}"],
    ['empty tag', 'a{}b', $d, 'a{}b'],
    ['at every place of a long text', implode(array_map(fn($n) => str_repeat('a', $n) . '{{b}}}}c}d{ {v}', range(1, 200))), $d,
        implode(array_map(fn($n) => str_repeat('a', $n) . '{b}}c}d{ V', range(1, 200)))],
    ['bytes beside the braces in a long text', str_repeat("a||b~~c\x7f\x7fd{|}|}}~{{||é\xff\x80 ", 20) . '{v}', ['|' => '!', 'v' => 'V'],
        str_repeat("a||b~~c\x7f\x7fd!|}~{||é\xff\x80 ", 20) . 'V'],
    ['values are not read again', '{w}', $d, '{{v}} {v} }}'],

    ['brace inside a tag', 'a{b{c}d', $d, 'a{b{{{{}'],
    ['as its last byte', '{b{', $d, '{b{}'],
    ['two as the last bytes', '{b{{', $d, '{b{{}'],
    ['the swallowed braces are part of the name', '{v{x', $d, 'two'],
    ['what was read before still counts', '{v {x} more {v}', $d, 'V'],
    ['a quoted text never ends', "{x 'a{b'}", $d, fails("Variable block bad parameter 'x 'a" . '{{{{' . $open)],
    ['in an opening tag', '{optional v{x}y{/optional}', $d, fails('Missing closing tag in @')],
    ['in a closing tag', '{optional v}x{/optional{y}z', $d, 'x'],
    ['in an escaping tag', 'a{htmlspecialchars v{x}b', $d, 'a'],
    ['in an include', 'a{include part.tpl{x}b', $d, 'a'],

    ['cut off: variable', "a{v \n", $d, 'aV'],
    ['cut off: missing', 'a{x', $d, 'a{x}'],
    ['cut off: whole text', "a{x 'y'", $d, 'ay'],
    ['cut off: open text', "a{x 'y", $d, fails("Variable block bad parameter 'x 'y$open")],
    ['cut off: include', '{include part.tpl', $d, 'P'],
    ['cut off: closing tag', '{dynamic list}{*}{/dynamic', $d, 'ab'],
    ['cut off: opening tag', '{dynamic list', $d, fails('Missing closing tag in @')],
    ['a brace for a closing tag', '{optional v}x{', $d, fails('Missing closing tag in @')],
]);
table([
    ['zero bytes in text, name and key', "\0{a\0b}{k::5\0}{k::5}", ['a' => 'no', "a\0b" => 'yes', 'k' => ["5\0" => 's', 5 => 'i']], "\0yessi"],
    ['zero bytes in a quoted text and an echo', "{x 'a\0b'}{x\0y}", [], "a\0b{x\0y}"],
    ['zero bytes in a compared value', "{optional v a\0b}y{/optional}{dynamic k}{optional [*] a\0b}y{/optional}{/dynamic}",
        ['v' => "a\0b", 'k' => ["a\0b" => 1]], 'y'],
], ['file']);
?>
--EXPECT--
36 rows
3 rows
