--TEST--
Plain variables: alternatives, quoted texts, the echo, what is decided when
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = ['name' => 'Bob', 'empty' => '', 'no' => false, 'nil' => null, 'zero' => 0, 'rows' => [['t' => 'A'], ['u' => 'B']],
    'blank' => [['t' => ''], ['t' => false], ['t' => null]], 'none' => []];
$bad = fn(string $argument, string $why) => fails("Variable block bad parameter '$argument': $why in @");
$inside = "' is forbidden in variable";
$open = "could not find second ' as the last character";
$colons = fails("Bad formated parameter'a:::b': too many : in @");

table([
    ['one', '<{name}> <{x}>', $d, '<Bob> <{x}>'],
    ['several', "{x name} {x y z name w} {x\tname} {x\n\v\f\r name}", $d, 'Bob Bob Bob Bob'],
    ['the echo keeps what was inside', "{\v x  y\t\n:z\f}{x \"y\"}", $d, "{x  y\t\n:z}{x \"y\"}"],
    ['texts', "{x 'n/a'} {x y 'n a'} {x ''} {''} {'just text'} {x 'name'} {name 'x'}", $d, 'n/a n a   just text name Bob'],
    ['white space and quotes in a text', "{x '  a\tb\n'}{' '}{x 'it's'}{'a' 'b'}{'''}{x ''''}", $d, "  a\tb\n it'sa' 'b'''"],
    ['nothing to print is still found', "{empty name}{no 'x'}{nil name 'x'}{zero 'x'}", $d, '0'],

    ['quote in a name', "{a'b}", $d, $bad("a'b", $inside)],
    ['quote behind a name', "{name'x'}", $d, $bad("name'x'", $inside)],
    ['quote behind a text', "{x 'y'z}", $d, $bad("x 'y'z", $open)],
    ['text with no end', "{ {x\t 'y \n}", $d, $bad("x\t 'y", $open)],
    ['quote as the last character', "{a '}", $d, $bad("a '", $open)],
    ['quote alone', "{'}", $d, $bad("'", $open)],
    ['name behind a text', "{a 'x' name}", $d, $bad("a 'x' name", $open)],
    ['closing brace in a text', "{x 'a}b'}", $d, $bad("x 'a", $open)],
    ['quotes are checked first', "{name a:::b c'd}", $d, $bad("name a:::b c'd", $inside)],

    ['behind the one found nothing is parsed', '{name a:::b}{dynamic rows}{name *::t a:::b}{/dynamic}', $d, 'BobBobBob'],
    ['behind one not found the next is', "{x a:::b name 'y'}", $d, $colons],
    ['in a hidden block too', '{optional x}{x a:::b}{/optional}', $d, $colons],

    ['outside every loop', "{*::t name} {*::t 'x'} {n::* ''} {[*] name} {[*] 'x'} {*::t  y} {x n::[*]}", $d, 'Bob x  Bob x {*::t  y} {x n::[*]}'],
    ['one of two', '{dynamic rows}{*::t *::u};{/dynamic}', $d, 'A;B;'],
    ['data behind a star', '{dynamic rows}{*::t name};{/dynamic}', $d, 'A;Bob;'],
    ['missing before a star', "{dynamic rows}{x *::t y::z 'none'};{/dynamic}", $d, 'A;none;'],
    ['echo for one element', '{dynamic rows}{*::t  x};{/dynamic}', $d, 'A;{*::t  x};'],
    ['unknown loop name', "{dynamic rows}{n::*::t *::t 'x'};{/dynamic}", $d, 'A;x;'],
    ['key before a value', '{dynamic n,rows}{x n::[*] *::t}{/dynamic}', $d, '01'],
    ['what prints nothing is found late', "{dynamic blank}{*::t name 'x'};{*::x empty name 'x'};{/dynamic}", $d, ';;;;;;'],

    ['late error', '{*::t a:::b}', $d, $colons],
    ['for one element', '{dynamic rows}{*::t a:::b}{/dynamic}', $d, $colons],
    ['never reached', '{dynamic rows}{*::t *::u a:::b}{*::x name a:::b}{/dynamic}', $d, 'ABobBBob'],
    ['never rendered', '{dynamic none}{*::t a:::b}{/dynamic}{dynamic x}{*::t a:::b}{/dynamic}{optional x}{*::t a:::b}{/optional}', $d, ''],
    ['hidden late', '{dynamic rows}{optional *::z}{*::z a:::b}{/optional}{*::t *::u}{/dynamic}', $d, 'AB'],
]);
?>
--EXPECT--
31 rows
