--TEST--
PHP references in the data: where they are looked through and where they are not
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['page' => 'by name', 'part.tpl' => 'by data']);
$text = 'part.tpl';
$zero = 0;
$three = 3;
$off = false;
$rows = ['k' => 'v', 0 => 'zero', 'visible' => false, 'num' => ['n']];
$plain = ['a', 'b'];
$object = (object) ['p' => 'q'];
$d = [
    'page' => &$text, 'zero' => &$zero, 'three' => &$three, 'rows' => &$rows, 'plain' => &$plain, 'shut' => ['visible' => &$off],
    'num' => ['num' => &$plain], 'numtext' => ['num' => &$text], 'numobject' => ['num' => &$object],
    'in' => ['ref' => &$rows], 'l' => [&$rows], 'g' => [['r' => &$plain, 'n' => ['num' => &$plain], 't' => &$text, 'z' => &$zero]],
];

table([
    ['end of a path', '{page}{three}', $d, 'part.tpl3'],
    ['middle of a path', "{rows::k}{rows::0}{in::ref::k}", $d, '{rows::k}{rows::0}{in::ref::k}'],
    ['escaped while reading', '{htmlspecialchars page}{addslashes three}', $d, ''],
    ['escaped in a loop', '{dynamic g}{rawurlencode *::t}{addslashes *::z}{/dynamic}', $d, 'part.tpl0'],
    ['file name', '{include page}', $d, 'by name'],

    ['truth', '{optional page}y{/optional}{optional zero}y{/optional}{!optional zero}n{/optional}', $d, 'yn'],
    ['"visible" of a referenced array is not asked', '{optional rows}y{/optional}', $d, 'y'],
    ['a referenced "visible" is', '{optional shut}y{/optional}', $d, ''],
    ['compared', "{optional page 'part.tpl'}y{/optional}{!optional three 3}n{/optional}", $d, 'n'],
    ['truth in a loop', '{dynamic g}{optional *::t}y{/optional}{optional *::z}y{/optional}{/dynamic}', $d, 'y'],
    ['referenced element as a condition', '{dynamic l}{optional *}y{/optional}{optional *::k}k{/optional}{/dynamic}', $d, 'y'],
    ['compared in a loop', '{dynamic g}{optional *::t part.tpl}y{/optional}{!optional *::z 0}n{/optional}{/dynamic}', $d, 'n'],

    ['loop over a referenced array, its "num" is not asked', '{dynamic rows}[{[*]}]{/dynamic}', $d, '[k][0][visible][num]'],
    ['loop over a referenced "num"', '{rdynamic num}[{*}]{/rdynamic}', $d, '[b][a]'],
    ['"num" referring to a text or an object', '{dynamic numtext}x{/dynamic}{dynamic numobject}x{/dynamic}', $d, ''],
    ['loop over a referenced text', '{dynamic page}x{/dynamic}', $d, ''],
    ['inner loop over a referenced array', '{dynamic g}<{dynamic *::r}x{/dynamic}>{/dynamic}', $d, '<>'],
    ['inner loop over a referenced "num"', '{dynamic g}<{dynamic *::n}x{/dynamic}>{/dynamic}', $d, '<>'],
    ['inner loop over a referenced element', '{dynamic n,l}<{dynamic *}x{/dynamic}{dynamic n::*}x{/dynamic}>{/dynamic}', $d, '<>'],
    ['lookup in a referenced element', "{dynamic n,l}{*::k '-'}{*::0 '-'}{n::*::k '-'}{/dynamic}", $d, '---'],
]);
?>
--EXPECT--
20 rows
