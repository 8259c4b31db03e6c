--TEST--
Lookup: which components are integer keys, what a path walks through, what counts as found
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$strings = ['007', '+7', ' 7', '0x1F', '7.0', '-0', '9223372036854775808', '-9223372036854775809', '18446744073709551615',
    '18446744073709551616', '010', '1e3', '--5', '-', '1_000', '٣'];
$integers = [7, -5, 0, -1, 31, 9223372036854775807, -9223372036854775807 - 1];
$rows = [];
foreach ([...$strings, ...$integers] as $key) {
    $data = ['k' => [$key => 'found', 'x' => [$key => ['y' => 'deep']]]];
    $rows[] = ["key $key", "{addslashes k::$key}-{addslashes k::x::$key::y}", $data, 'found-deep'];
    $rows[] = ["element $key", "{dynamic k}{addslashes *::$key}{/dynamic}", ['k' => [[$key => 'found']]], 'found'];
}

$x = 'x';
$array = ['b' => 'inside'];
$d = [
    7 => 'seven', -5 => 'minus', '00' => 'zeros', '0x7' => 'hex', 'A' => 'upper', 'user.name' => 'dots', 'user-name' => 'dash',
    'num' => 'n', 'visible' => 'v', 'a' => ['b' => 'ab', 'f' => false, 'n' => null], 'k' => [['' => 'inner', 'b' => 1], &$x],
    'text' => 'text', 'int' => 5, 'null' => null, 'object' => (object) ['p' => 'property', '0' => 'zero'],
    'fixed' => SplFixedArray::fromArray(['first']), 'reference' => &$array, 'k::b' => 'never',
];
foreach (['7', '-5', '7::x', 'B', 'a::B', 'a::b::c', 'a::f::x', 'a::n::x', 'text::0', 'text::x', 'int::0', 'null::0', 'k::b', 'k::00',
    'object::p', 'object::0', 'fixed::0', 'reference::b', 'k::2'] as $path) {
    $rows[] = ["not found: $path", "{{$path}}", $d, "{{$path}}"];
}
$deep = ['end'];
for ($i = 0; $i < 300; $i++) {
    $deep = ['x' => $deep];
}
// The same names at other places of each row, in rows of all shapes, under keys that were made at run time.
$made = fn(string $name): string => substr(" $name", 1);
$shapes = [['a' => 1, 'b' => 2], ['b' => 3, 'a' => 4], ['a' => 5], ['x' => 0, 'y' => 0, 'b' => 6, 'a' => 7], [8, 9], [], 'text',
    [$made('a') => 10, $made('b') => 11], ['b' => 12], [5 => 0, 'a' => 13], ['aa' => 0, 'bb' => 0], ['A' => 0, $made('b') => 14],
    ['a' => 0, 'b' => 15], ['a' => 16]];
unset($shapes[3]['x'], $shapes[12]['a']);

table([
    ...$rows,
    ['string keys at the top', '{00}{0x7}{A}{user.name}{user-name}{num}{visible}', $d, 'zeroshexupperdotsdashnv'],
    ['found is found, whatever it holds', "{a::f 'x'}{a::n 'x'}{null 'x'}", $d, ''],
    ['integer keys below the top', '{k::0::b}{k::1}', $d, '1x'],
    ['integer key in an object under iteration', fn() => template("{dynamic l}{*::0 'none'}{*::1 'none'}{*::x 'none'}{/dynamic}",
        ['l' => [SplFixedArray::fromArray(['a'])]], true), null, 'anonenone'],
    ['text key in an object under iteration', "{dynamic l}{*::p 'none'}{*::0 'none'}{/dynamic}", ['l' => [$d['object']]], 'nonenone'],
    ['integer key in what is no table', "{dynamic l}{*::0 '-'}{*::0::1 '-'}{/dynamic}", ['l' => ['text', 5, null, 1.5, STDIN]], '----------'],
    ['a long path', '{' . str_repeat('x::', 300) . '0}', $deep, 'end'],
    ['columns', "{dynamic l}{*::a '-'}{*::b '-'} {/dynamic}", ['l' => $shapes], '12 43 5- 76 -- -- -- 1011 -12 13- -- -14 -15 16- '],
    ['names with one hash value', "{dynamic l}{*::Ez '-'}{*::Ez345678 '-'}{*::abcdefghEz '-'} {/dynamic}",
        ['l' => [['Ez' => 1], ['FY' => 2], ['Ez345678' => 3], ['FY345678' => 4], ['abcdefghEz' => 5], ['abcdefghFY' => 6]]], '1-- --- -3- --- --5 --- '],
]);
?>
--EXPECT--
74 rows
