--TEST--
Braces: escapes, what opens a tag, a brace inside a tag, tags cut off by the end of input
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['part.tpl' => 'P']);
$d = ['v' => 'V', 'é' => 'E', 'v{{' => 'two', 'list' => ['a', 'b']];

table([
    ['nothing', '', $d, ''],
    ['no brace', "line\nline\t\x01\xff", $d, "line\nline\t\x01\xff"],
    ['doubled', 'a{{b}}c', $d, 'a{b}c'],
    ['four', '{{{{v}}}}', $d, '{{v}}'],
    ['a tag in doubled braces', '{{{v}}}', $d, '{V}'],
    ['doubled, then lone at the end', '{{{', $d, '{{'],
    ['three closing', 'a}}}b', $d, 'a}}b'],
    ['one closing', 'a}b', $d, 'a}b'],
    ['closing then tag', '}{v}', $d, '}V'],
    ['doubled closing then tag', '}}{v}', $d, '}V'],
    ['three closing then tag', '}}}{v}', $d, '}}V'],
    ['tag then closing', '{v}}', $d, 'V}'],
    ['tag then doubled closing', '{v}}}', $d, 'V}'],
    ['tag then three closing', '{v}}}}', $d, 'V}}'],
    ['opening then closing pairs', '{{}', $d, '{}'],
    ['only opening', '{', $d, '{'],
    ['only closing', '}', $d, '}'],
    ['pairs alone', '{{}}', $d, '{}'],
    ['opening at the end', '{v}{', $d, 'V{'],
    ['closing at the end', '{v}x}', $d, 'Vx}'],
    ['before a blank', 'x { y', $d, 'x { y'],
    ['before tab, line feed, return', "{\t{\n{\r{", $d, "{\t{\n{\r{"],
    ['white space between two', "{ {v}{\n{{v}}", $d, "{ V{\n{v}"],
    ['doubled then blank', '{{{ v}', $d, '{{ v}'],
    ['blank tag is text', '{ }', $d, '{ }'],
    ['vertical tab and form feed open a tag', "{\vv}{\fv}", $d, 'VV'],
    ['control byte opens a tag', "{\x01}", $d, "{\x01}"],
    ['high bytes open a tag', "{é}{\x80}{\xA0v}", $d, "E{\x80}{\xA0v}"],
    ['empty tag', 'a{}b', $d, 'a{}b'],
    ['empty tag then closing', '{}}}', $d, '{}}'],
    ['a line feed inside a tag', "{v\n}", $d, 'V'],

    ['brace inside a tag', 'a{b{c}d', $d, 'a{b{{{{}'],
    ['brace as the last byte of a tag', '{b{', $d, '{b{}'],
    ['two braces at the end of a tag', '{b{{', $d, '{b{{}'],
    ['the swallowed braces are part of the name', '{v{x', $d, 'two'],
    ['what was read before still counts', '{v {x} more {v}', $d, 'V'],
    ['a quoted text never ends', "{x 'a{b'}", $d,
        fails("Variable block bad parameter 'x 'a{{{{': could not find second ' as the last character in @")],
    ['brace in an opening tag', '{optional v{x}y{/optional}', $d, fails('Missing closing tag in @')],
    ['brace in a closing tag', '{optional v}x{/optional{y}z', $d, 'x'],
    ['brace in an escaping tag', 'a{htmlspecialchars v{x}b', $d, 'a'],
    ['brace in an include', 'a{include part.tpl{x}b', $d, 'a'],

    ['cut off: variable', 'a{v', $d, 'aV'],
    ['cut off: white space', "a{v \n", $d, 'aV'],
    ['cut off: missing', 'a{x', $d, 'a{x}'],
    ['cut off: whole text', "a{x 'y'", $d, 'ay'],
    ['cut off: open text', "a{x 'y", $d,
        fails("Variable block bad parameter 'x 'y': could not find second ' as the last character in @")],
    ['cut off: include', '{include part.tpl', $d, 'P'],
    ['cut off: closing tag', '{dynamic list}{*}{/dynamic', $d, 'ab'],
    ['cut off: opening tag', '{dynamic list', $d, fails('Missing closing tag in @')],
    ['a brace for a closing tag', '{optional v}x{', $d, fails('Missing closing tag in @')],
    ['values are not read again', '{w}{v}', ['w' => '{{v}} {v} }}', 'v' => '{w}'], '{{v}} {v} }}{w}'],
]);
table([
    ['zero bytes in text, name and key', "\0{a\0b}{k::5\0}{k::5}", ['a' => 'no', "a\0b" => 'yes', 'k' => ["5\0" => 's', 5 => 'i']],
        "\0yessi"],
    ['zero bytes in a quoted text and an echo', "{x 'a\0b'}{x\0y}", [], "a\0b{x\0y}"],
], ['file']);
?>
--EXPECT--
51 rows
2 rows
