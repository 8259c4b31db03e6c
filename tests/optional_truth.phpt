--TEST--
Optional blocks without a compared value: truth, "visible", missing values
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$shown = [
    'text' => 'x', 'blank' => ' ', 'text 0.0' => '0.0', 'text 00' => '00', 'text false' => 'false', 'zero byte' => "\0",
    'integer' => -1, 'float' => 0.5, 'not a number' => NAN, 'true' => true, 'array' => [0], 'array of null' => ['' => null],
    'object' => (object) ['visible' => false], 'object of nothing' => new SplFileInfo(''), 'empty container' => new ArrayObject(), 'resource' => STDIN,
    'visible' => ['visible' => true], 'visible text' => ['visible' => 'no'], 'visible is not asked twice' => ['visible' => ['visible' => false]],
    'Visible' => ['Visible' => false], 'visible inside' => [['visible' => false]],
];
$hidden = [
    'empty text' => '', 'text 0' => '0', 'zero' => 0, 'float zero' => 0.0, 'negative zero' => -0.0, 'null' => null, 'false' => false,
    'empty array' => [], 'invisible' => ['visible' => false, 'x' => 1], 'visible 0' => ['visible' => '0', 'x' => 1],
    'visible null' => ['visible' => null, 'x' => 1], 'visible nothing' => ['visible' => [], 'x' => 1],
];

$rows = [];
foreach (['y' => $shown, 'n' => $hidden] as $answer => $values) {
    foreach ($values as $what => $value) {
        $rows[] = ["$what, data", '{optional v}y{/optional}{!optional v}n{/optional}', ['v' => $value], $answer];
        $rows[] = ["$what, element", '{dynamic l}{optional *}y{/optional}{!optional *}n{/optional}{/dynamic}', ['l' => [$value]], $answer];
    }
}
table($rows);

$d = ['v' => 'V', 'w' => 0, 'a' => ['b' => ['visible' => 1]], 'l' => [['s' => 1], []], 'it' => ['visible' => false, 'in' => 'side']];
table([
    ['missing', '{optional x}y{/optional}{!optional x}n{/optional}', $d, 'n'],
    ['missing path', '{optional v::x}y{/optional}{!optional a::x::b}n{/optional}', $d, 'n'],
    ['path', '{optional a::b}y{/optional}{!optional a::b::visible}n{/optional}', $d, 'y'],
    ['missing in an element', '{dynamic l}{optional *::s}y{/optional}{!optional *::s}n{/optional}{/dynamic}', $d, 'yn'],
    ['the block does not change what a name means', '{!optional it}{it::in}{/optional}', $d, 'side'],
    ['no argument', '{optional}y{/optional}{!optional }n{/optional}', $d, 'n'],
    ['the empty key', '{optional}y{/optional}{!optional}n{/optional}', ['' => 1], 'y'],
    ['only blanks split', "{optional v\t}y{/optional}{optional v\tx}y{/optional}{!optional v\nV}n{/optional}", $d, 'yn'],
    ['text behind the closing tag', '{optional v}y{/optional v}{!optional v}n{/optional  anything:::}', $d, 'y'],
    ['nested', '{optional v}1{optional w}2{optional v}3{/optional}{/optional}{!optional w}4{optional v}5{/optional}{/optional}{/optional}', $d, '145'],
    ['hidden hides all', 'a{optional w}{v}{optional v}b{/optional}{dynamic l}c{/dynamic}{*}d{/optional}e{dynamic l}{[*]}{/dynamic}f', $d, 'ae01f'],
    ['text around', '1{optional v}2{/optional}3{optional w}4{/optional}5{optional v}{/optional}6', $d, '12356'],
    ['errors in a hidden body', '{optional w}{addslashes :::}{/optional}', $d, fails("Bad formated parameter':::': too many : in @")],
    ['errors in a nested argument', '{optional w}{!optional *::* x}{/optional}{/optional}', $d, fails('Bad formated parameter: too many * in @')],
]);
?>
--EXPECT--
66 rows
14 rows
