--TEST--
Dynamic blocks: what is looped over, keys, argument syntax, blocks that render nothing
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = [
    'v' => 'V', 'l' => ['a', 'b'], 'keys' => [5 => 'i', 'x' => 's', -3 => 'n', '' => 'e', '07' => 'z', "k\0l" => 'c', PHP_INT_MAX => 'm'],
    'empty' => [], 'none' => null, 'text' => 'text', 'yes' => true, 'int' => 3, 'float' => 1.5, 'object' => (object) ['a' => 1],
    'fixed' => SplFixedArray::fromArray([1]), 'path' => ['to' => ['list' => ['p', 'q']]], 0 => ['zero'], ' l' => ['blank'], 'b,c' => ['comma'],
    'mixed' => ['t', 1, null, false, ['s' => 'S']], 'rows' => [['l' => ['1', '2'], 's' => 's'], ['l' => 'text'], ['l' => []], ['l' => null], 'x', []],
    'l,m' => ['whole'], 'big' => array_fill(0, 3000, 'x'),
];
$nothing = [];
foreach (['empty', 'none', 'text', 'yes', 'int', 'float', 'object', 'fixed', 'x', 'path::x', 'text::x', '0', 'l::0', 'path::to::list::0'] as $name) {
    $nothing[] = ["nothing for $name", "<{dynamic $name}{v}{/dynamic}{rdynamic $name}{v}{/rdynamic}>", $d, '<>'];
    $nothing[] = ["nothing for $name, named", "<{dynamic n,$name}{dynamic n::*}{n::*}{/dynamic}{/dynamic}>", $d, '<>'];
}
$no_name = fails("Dynamic block bad parameter '': no parameter found in @");

table([
    ...$nothing,
    ['keys', '{dynamic keys}[{[*]}={*}]{/dynamic}', $d, '[5=i][x=s][-3=n][=e][07=z][k=c][9223372036854775807=m]'],
    ['keys in reverse', '{rdynamic keys}[{[*]}={*}]{/rdynamic}', $d, '[9223372036854775807=m][k=c][07=z][=e][-3=n][x=s][5=i]'],
    ['an empty key is found', "{dynamic keys}{[*] '-'},{/dynamic}", $d, '5,x,-3,,07,k,9223372036854775807,'],
    ['keys as the second', "{dynamic keys}{*::x z::[*] [*] '-'},{/dynamic}", $d, '5,x,-3,,07,k,9223372036854775807,'],
    ['a path', '{dynamic path::to::list}{*}{/dynamic}', $d, 'pq'],
    ['mixed elements', "{dynamic mixed}{*::s *},{/dynamic}", $d, 't,1,,,S,'],
    ['the body for each element', '{dynamic l}x{v}{missing}{/dynamic}', $d, 'xV{missing}xV{missing}'],
    ['many', '{dynamic big}{*}{/dynamic}', $d, str_repeat('x', 3000)],
    ['one after the other', '{dynamic l}{*}{/dynamic}-{rdynamic l}{*}{/rdynamic}-{dynamic l}{/dynamic}-{dynamic l}{[*]}{/dynamic}', $d, 'ab-ba--01'],
    ['one array in itself', '{dynamic l}{dynamic l}{*}{/dynamic}{*}{/dynamic}', $d, 'abaabb'],
    ['itself in reverse', '{rdynamic n,l}{dynamic m,l}{n::*}{*} {/dynamic}{/rdynamic}', $d, 'ba bb aa ab '],
    ['inner data', '{dynamic rows}<{dynamic *::l}{*}{/dynamic}{rdynamic *::l}{*}{/rdynamic}{*::s}>{/dynamic}', $d,
        '<1221s><{*::s}><{*::s}><{*::s}><{*::s}><{*::s}>'],
    ['element as a loop', '{dynamic path::to}{dynamic *}{*}{/dynamic}{/dynamic}', $d, 'pq'],
    ['star outside every loop', '<{dynamic *}x{/dynamic}{dynamic *::l}x{/dynamic}{dynamic n,n::*}x{/dynamic}>', $d, '<>'],
    ['unknown name', '{dynamic l}<{dynamic z::*}x{/dynamic}{dynamic z::*::l}x{/dynamic}>{/dynamic}', $d, '<><>'],

    ['empty name', '{dynamic ,l}{dynamic ,l}{*}{/dynamic}{/dynamic}', $d, 'abab'],
    ['blank behind the comma', '{dynamic n, l}{*}{n::*}{/dynamic}', $d, 'blankblank'],
    ['blank before the comma', '{dynamic n ,l}{rawurlencode n ::*}{rawurlencode n::*}{/dynamic}', $d, 'ab'],
    ['a second comma', '{dynamic n,b,c}{n::*}{/dynamic}', $d, 'comma'],
    ['the first comma always splits', '{dynamic l,m}{*}{/dynamic}', $d, ''],
    ['a name like the data', '{dynamic l,l}{l::*}{l::0}{/dynamic}', $d, 'aaba'],
    ['text behind the closing tag', '{dynamic l}{*}{/dynamic l,:::}', $d, 'ab'],

    ['no argument', '{rdynamic }{/rdynamic}', $d, $no_name],
    ['a name alone', '{dynamic n,}{/dynamic}', $d, $no_name],
    ['comma alone', '{dynamic ,}{/dynamic}', $d, $no_name],
    ['the empty key', '{dynamic}{*}{/dynamic}{dynamic n,}{n::*}{/dynamic}', ['' => ['e']], 'ee'],
    ['no array under the empty key', '{dynamic}{/dynamic}', ['' => 'text'], $no_name],
    ['key', '{dynamic [*]}{/dynamic}', $d, fails("Dynamic block bad parameter '[*]': [*] is forbidden in @")],
    ['key of a name', '{rdynamic n,m::[*]}{/rdynamic}', $d, fails("Dynamic block bad parameter 'm::[*]': [*] is forbidden in @")],
    ['errors in the body of nothing', '{dynamic x}{addslashes *::*}{/dynamic}', $d, fails('Bad formated parameter: too many * in @')],
]);

// The array's own pointer stays where it is.
$list = ['a', 'b', 'c'];
next($list);
table([['pointer', '{dynamic l}{rdynamic l}{*}{/rdynamic}{/dynamic}', ['l' => &$list], 'cbacbacba']]);
echo key($list), "\n";
?>
--EXPECT--
58 rows
1 rows
1
