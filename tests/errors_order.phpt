--TEST--
Closing tags, and which error is reported when there are several; no text comes before an error
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['bad.tpl' => 'x{/dynamic}', 'late.tpl' => '{*::x a:::b}']);
$d = ['v' => 'V', 'l' => ['a', 'b'], 'arrays' => [[], []], 'bad' => 'bad.tpl'];
$unexpected = fn(string $kind) => fails("Unexpected closing $kind tag in @");
$missing = fails('Missing closing tag in @');
$colons = fails("Bad formated parameter'a:::b': too many : in @");
$array = 'Array to string conversion';

$rows = [];
$opened = ['' => '', 'optional v' => 'optional', '!optional v' => 'optional', 'optional *' => 'optional', 'optional x' => 'optional',
    'dynamic l' => 'dynamic', 'dynamic x' => 'dynamic', 'dynamic n,*::x' => 'dynamic', 'rdynamic l' => 'rdynamic', 'rdynamic x' => 'rdynamic'];
foreach ($opened as $opening => $kind) {
    $before = $opening === '' ? '' : "{{$opening}}";
    foreach (array_diff(['optional', 'dynamic', 'rdynamic'], [$kind]) as $closing) {
        $rows[] = ["$opening, /$closing", "{optional v}{/optional}$before{/$closing}{/$kind}", $d, $unexpected($closing)];
    }
    if ($opening !== '') {
        $rows[] = ["$opening left open", "$before{v}", $d, $missing];
        $rows[] = ["$opening left open in a block", "{optional v}$before{/$kind}", $d, $missing];
    }
}
table([
    ...$rows,
    ['crossed', '{dynamic l}{optional v}{/dynamic}{/optional}', $d, $unexpected('dynamic')],
    ['well nested', '{optional v}1{dynamic bad}-{/dynamic}2{rdynamic l}3{!optional x}4{/optional}5{/rdynamic}6{/optional}7', $d, '1234534567'],
    ['a negated closing tag is a variable', '{optional v}{/!optional}', $d, $missing],

    ['the first in the text', "{v}{addslashes a:::b}{/optional}{a'b}", $d, $colons],
    ['the first of two late ones', "{*::x a:::b}{*::x c:::d}", $d, $colons],
    ['a late one loses against a later tag', "{*::x a:::b}{/optional}", $d, $unexpected('optional')],
    ['against a missing closing tag', "{dynamic l}{*::x a:::b}", $d, $missing],
    ['against an included file', '{include late.tpl}{include bad}', $d, fails('Unexpected closing dynamic tag in bad.tpl')],
    ['an included file before what follows it', '{include bad.tpl}{addslashes a:::b}', $d, fails('Unexpected closing dynamic tag in bad.tpl')],
    ['late errors in the order of rendering',
        '{rdynamic l}{optional [*] 0}{*::x c:::d}{/optional}{optional [*] 1}{*::x *::y a:::b}{/optional}{/rdynamic}', $d, $colons],
    ['arrays read before an error have warned', '{l}{*}{arrays}{/dynamic}', $d, fails($array, $array, 'Unexpected closing dynamic tag in @')],
    ['so have arrays rendered', '{dynamic arrays}{*}{optional [*] 1}{*::x a:::b}{/optional}{/dynamic}{l}', $d,
        fails($array, $array, $array, "Bad formated parameter'a:::b': too many : in @")],
]);

// A failed call leaves nothing behind.
foreach (['{/dynamic}', '{v}', '{include bad.tpl}', '{dynamic l}{*::x a:::b}{/dynamic}', '{dynamic l}{*}{/dynamic}'] as $text) {
    echo show(outcome(fn() => template($text, $d, true))), "\n";
}
?>
--EXPECT--
51 rows
null + Unexpected closing dynamic tag in {/dynamic}
'V'
null + Unexpected closing dynamic tag in bad.tpl
null + Bad formated parameter'a:::b': too many : in {dynamic l}{*::x a:::b}{/dynamic}
'ab'
