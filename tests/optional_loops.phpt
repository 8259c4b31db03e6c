--TEST--
Optional blocks in loops: keys, namespaces, the element that the body sees
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = [
    'v' => 'V', 'k' => [2 => 'a', 3 => 'b', '03' => 'c', "'3'" => 'd', '' => 'e', ' 3' => 'f', 'x' => 'g', "x\0y" => 'h', -1 => 'i'],
    'o' => ['one' => ['show' => 1, 'l' => ['p', 'q']], 'two' => ['show' => 0, 'l' => ['r']], 'three' => ['l' => ['s', 't']]],
    'once' => [['show' => '']], 'none' => [],
];
$keys = fn(string $condition): string => "{dynamic k}{{$condition}}{*}{/optional}{/dynamic}";
$inner = fn(string $condition, string $body): string =>
    "{dynamic n,o}{dynamic m,*::l}{{$condition}}$body{/optional}{/dynamic};{/dynamic}";
$both = fn(string $reference): string => "<{optional $reference}y{/optional}{!optional $reference}n{/optional}>";

table([
    ['integer key', $keys('optional [*] 3') . $keys('!optional [*] 3'), $d, 'bacdefghi'],
    ['quotes stay in a compared key', $keys("optional [*] '3'") . $keys("!optional [*] ''"), $d, 'dabcdefghi'],
    ['no value: the empty key', $keys('optional [*]') . $keys('!optional [*]'), $d, 'eabcdfghi'],
    ['a second blank belongs to the key', $keys('optional [*]  3'), $d, 'f'],
    ['no number is read from a key', $keys('optional [*] 3x') . $keys('optional [*] -1'), $d, 'i'],
    ['the whole key counts, zero byte included', $keys('optional [*] x'), $d, 'g'],
    ['value of the same loop', '{dynamic k}{optional * b}{[*]}{/optional}{/dynamic}', $d, '3'],

    ['key of the outer loop', $inner('optional n::[*] two', '{*}'), $d, ';r;;'],
    ['key of the inner loop', $inner('!optional [*] 0', '{*}'), $d, 'q;;t;'],
    ['by its name', $inner('optional m::[*] 1', '{n::[*]}'), $d, 'one;;three;'],
    ['value of the outer loop', $inner('optional n::*::show', '{*}'), $d, 'pq;;;'],
    ['compared value of the outer loop', $inner('optional n::*::show 0', '{*}'), $d, ';r;;'],
    ['negated and missing', $inner('!optional n::*::show', '{*}'), $d, ';r;st;'],
    ['decided while reading', $inner('optional v', '{*}'), $d, 'pq;r;st;'],
    ['the body stays with the inner element', $inner('optional n::*::show', '{[*]}{*}{n::[*]}'), $d, '0pone1qone;;;'],
    ['a loop in the body', '{dynamic o}{optional *::show}{dynamic *::l}{*}{/dynamic}{/optional}{[*]};{/dynamic}', $d, 'pqone;two;three;'],
    ['the body of a named loop', '{dynamic n,o}{dynamic m,*::l}{optional n::*::show}{dynamic n::*::l}{*}{/dynamic}{/optional}{/dynamic}{/dynamic}',
        $d, 'pqpq'],

    ['unknown name', '{dynamic once}' . $both('z::*::show') . $both('z::*') . $both('z::[*]') . $both('z::[*] 0') . '{/dynamic}', $d, '<><><><>'],
    ['outside every loop', $both('*') . $both('*::x 1') . $both('[*]') . $both('n::[*] x') . $both('once::*'), $d, '<><><><><>'],
    ['name of a finished loop', '{dynamic n,once}x{/dynamic}' . $both('n::*') . '{dynamic once}' . $both('n::*') . '{/dynamic}', $d, 'x<><>'],
    ['in a loop without elements', "{dynamic none}{$both('*')}{/dynamic}{dynamic x}{$both('*')}{/dynamic}", $d, ''],
    ['outside, the body is still read', '{optional *}{a\'b}{/optional}', $d,
        fails("Variable block bad parameter 'a'b': ' is forbidden in variable in @")],
    ['sections that end together', '{dynamic k}{optional [*] 3}a{optional * b}b{!optional * x}c{optional * b}d{/optional}{/optional}{/optional}{/optional}{[*]}{/dynamic}',
        ['k' => [2 => 'a', 3 => 'b', 4 => 'b']], '2abcd34'],
    ['nested conditions', '{dynamic k}{optional [*] 3}{optional * b}y{/optional}{!optional * b}n{/optional}{/optional}{/dynamic}', $d, 'y'],
]);
?>
--EXPECT--
24 rows
