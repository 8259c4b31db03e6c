--TEST--
Deep nesting: a thousand levels work, too many end in an error, the next call works
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = ['v' => 'V', 'l' => ['e']];
$tree = 'leaf';
for ($i = 0; $i < 1000; $i++) {
    $tree = [$tree];
}
$nested = fn(int $levels, string $opening, string $body, string $closing): string =>
    str_repeat($opening, $levels) . $body . str_repeat($closing, $levels);
$files = [];
for ($i = 0; $i < 300; $i++) {
    $files["$i.tpl"] = '<{optional v}{include ' . ($i + 1) . '.tpl}{/optional}>';
}
put($files);

table([
    ['optional', $nested(1000, '{optional v}(', '{v}', '){/optional}'), $d, $nested(1000, '(', 'V', ')')],
    ['hidden', $nested(1000, '{optional x}(', '{v}', '){/optional}'), $d, ''],
    ['dynamic', $nested(1000, '{dynamic l}(', '{*}', '){/dynamic}'), $d, $nested(1000, '(', 'e', ')')],
    ['each in the element of the one around', '{dynamic tree}' . $nested(998, '{rdynamic *}', '{dynamic n,*}{n::*}{/dynamic}', '{/rdynamic}') . '{/dynamic}',
        ['tree' => $tree], 'leaf'],
    ['named', implode('', array_map(fn($n) => "{dynamic n$n,l}", range(1, 300))) . '{n1::*}{n300::[*]}' . str_repeat('{/dynamic}', 300), $d, 'e0'],
    ['one left open', $nested(1000, '{optional v}', '', '{/optional}') . '{optional v}', $d, fails('Missing closing tag in @')],
    ['an error at the bottom', $nested(1000, '{optional v}', '{/dynamic}', '{/optional}'), $d, fails('Unexpected closing dynamic tag in @')],
    ['included files', '{include 0.tpl}', $d, $nested(300, '<', '', '>')],
    ['side by side', str_repeat('{optional v}{dynamic l}{*}{/dynamic}{/optional}', 20000), $d, str_repeat('e', 20000)],
]);
table([
    ['too many', $nested(200000, '{optional v}', '', '{/optional}'), $d, fails('Blocks nested too deeply in @')],
    ['too many hidden', $nested(200000, '{optional x}', '', ''), $d, fails('Blocks nested too deeply in @')],
    ['too many loops', $nested(200000, '{dynamic l}', '', ''), $d, fails('Blocks nested too deeply in @')],
    ['afterwards', '{optional v}{v}{/optional}', $d, 'V'],
], ['file']);
?>
--EXPECT--
9 rows
4 rows
