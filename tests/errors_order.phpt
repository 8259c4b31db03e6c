--TEST--
Which error is reported when there are several; no text before an error; what came before is done
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['bad.tpl' => 'x{/dynamic}', 'late.tpl' => "{*::x a:::b}", 'good.tpl' => 'g']);
$d = ['v' => 'V', 'l' => ['a', 'b'], 'arrays' => [[], []], 'bad' => 'bad.tpl'];
$colons = fails("Bad formated parameter'a:::b': too many : in @");
$array = 'Array to string conversion';

table([
    ['the first in the text', "{v}{addslashes a:::b}{/optional}{a'b}", $d, $colons],
    ['the first of two late ones', "{*::x a:::b}{*::x c:::d}", $d, $colons],
    ['a late one loses against a later syntax error', "{*::x a:::b}{/optional}", $d, fails('Unexpected closing optional tag in @')],
    ['and against a missing closing tag', "{dynamic l}{*::x a:::b}", $d, fails('Missing closing tag in @')],
    ['and against an included file', '{include late.tpl}{include bad}', $d, fails('Unexpected closing dynamic tag in bad.tpl')],
    ['an included file before what follows it', '{include bad.tpl}{addslashes a:::b}', $d, fails('Unexpected closing dynamic tag in bad.tpl')],
    ['late errors in the order of rendering', '{dynamic l}{optional [*] 1}{*::x a:::b}{/optional}{optional [*] 0}{*::x *::y c:::d}{/optional}{/dynamic}', $d,
        fails("Bad formated parameter'c:::d': too many : in @")],
    ['in reverse', '{rdynamic l}{optional [*] 1}{*::x a:::b}{/optional}{optional [*] 0}{*::x c:::d}{/optional}{/rdynamic}', $d, $colons],
    ['arrays read before an error have warned', '{l}{*}{arrays}{/dynamic}', $d,
        fails($array, $array, 'Unexpected closing dynamic tag in @')],
    ['arrays rendered before a late error have warned', '{dynamic arrays}{*}{optional [*] 1}{*::x a:::b}{/optional}{/dynamic}{l}', $d,
        fails($array, $array, $array, "Bad formated parameter'a:::b': too many : in @")],
    ['each message once', "{x a'b c'd}", $d, fails("Variable block bad parameter 'x a'b c'd': ' is forbidden in variable in @")],
]);

// The level of the warning, and calls that follow a failed one.
set_error_handler(function (int $level, string $message): bool {
    echo $level === E_WARNING ? 'warning' : $level, ": $message\n";
    return true;
});
foreach (['{/dynamic}', '{v}', '{include bad.tpl}', '{dynamic l}{*::x a:::b}{/dynamic}', '{dynamic l}{*}{/dynamic}'] as $text) {
    var_dump(template($text, $d, true));
}
?>
--EXPECT--
11 rows
warning: Unexpected closing dynamic tag in {/dynamic}
NULL
string(1) "V"
warning: Unexpected closing dynamic tag in bad.tpl
NULL
warning: Bad formated parameter'a:::b': too many : in {dynamic l}{*::x a:::b}{/dynamic}
NULL
string(2) "ab"
