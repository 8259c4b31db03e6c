--TEST--
The element "num" of looped data: found while reading, found while rendering
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$rows = ['a' => 'A', 'b' => 'B'];
$object = (object) ['o' => 'O', 'p' => 'P'];

// [what, looped value, text when found while reading, text when found while rendering]
$sides = [
    ['rows', ['num' => $rows, 'x' => 'X'], 'a=A b=B ', 'a=A b=B '],
    ['rows behind others', ['x' => 'X', 0 => 'Y', 'num' => $rows], 'a=A b=B ', 'a=A b=B '],
    ['no rows', ['num' => [], 'x' => 'X'], '', ''],
    ['text', ['num' => 'text', 'x' => 'X'], '', ''],
    ['null', ['num' => null, 'x' => 'X'], '', ''],
    ['number', ['num' => 2, 'x' => 'X'], '', ''],
    ['object', ['num' => $object, 'x' => 'X'], '', 'o=O p=P '],
    ['rows with a "num" of their own', ['num' => ['num' => 'inner', 'k' => 'K']], 'num=inner k=K ', 'num=inner k=K '],
    ['another case', ['Num' => 'N', 'nums' => 'S'], 'Num=N nums=S ', 'Num=N nums=S '],
    ['an element that is "num"', ['num'], '0=num ', '0=num '],
    ['an object itself', (object) ['num' => $rows], '', ''],
];

$table = [];
foreach ($sides as [$what, $value, $read, $rendered]) {
    $body = '{[*]}={*} ';
    $back = implode(' ', array_reverse(explode(' ', trim($rendered)))) . ($rendered === '' ? '' : ' ');
    $data = ['v' => $value, 'deep' => ['er' => $value], 'l' => ['key' => $value], 'g' => [['in' => $value]]];
    $table[] = ["$what, reading", "{dynamic v}$body{/dynamic}|{dynamic n,deep::er}$body{/dynamic}", $data, "$read|$read"];
    $table[] = ["$what, element", "{dynamic l}{dynamic *}$body{/dynamic}{/dynamic}", $data, $rendered];
    $table[] = ["$what, in an element", "{dynamic n,g}{dynamic m,n::*::in}$body{/dynamic}{rdynamic m,*::in}$body{/rdynamic}{/dynamic}", $data,
        $rendered . $back];
}
table($table);

$d = ['list' => ['num' => $rows, 'title' => 'T'], 'num' => $rows, 'outer' => ['num' => [['num' => ['i' => 'I'], 'n' => 1]]], 'l' => [[]]];
table([
    ['asked for by its name', '{dynamic list::num}{[*]}{/dynamic}{dynamic num}{[*]}{/dynamic}', $d, 'abab'],
    ['in reverse', '{rdynamic list}{[*]}{list::title}{/rdynamic}', $d, 'bTaT'],
    ['"num" in "num"', '{dynamic o,outer}{o::*::n}{dynamic *}{[*]}{*}{o::[*]}{/dynamic}{/dynamic}', $d, '1iI0'],
    ['"num" of the whole data is not meant', '{dynamic l}<{dynamic *}x{/dynamic}>{/dynamic}', $d, '<>'],
]);
?>
--EXPECT--
33 rows
4 rows
