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
    ['found', '{name}', $d, 'Bob'],
    ['not found', '<{none2}>', $d, '<{none2}>'],
    ['second', '{x name}{x y z name w}', $d, 'BobBob'],
    ['any white space between', "{x\tname}{x\n\v\f\r name}", $d, 'BobBob'],
    ['echo keeps what was inside', "{\v x  y\t\n:z\f}", $d, "{x  y\t\n:z}"],
    ['text', "{x 'n/a'}{x y 'n a'}", $d, 'n/an a'],
    ['empty text', "a{x ''}b{''}c", $d, 'abc'],
    ['text alone', "{'just text'}", $d, 'just text'],
    ['white space in a text stays', "{x '  a\tb\n'}{' '}", $d, "  a\tb\n "],
    ['quotes in a text', "{x 'it's'}{'a' 'b'}{'''}{x ''''}", $d, "it'sa' 'b'''"],
    ['double quotes are no quotes', '{x "y"}', $d, '{x "y"}'],
    ['a text is not looked up', "{x 'name'}", $d, 'name'],
    ['a text not needed', "{name 'x'}", $d, 'Bob'],
    ['nothing to print is still found', "{empty name}{no 'x'}{nil name 'x'}", $d, ''],
    ['zero', "{zero 'x'}", $d, '0'],

    ['quote in a name', "{a'b}", $d, $bad("a'b", $inside)],
    ['quote behind a name', "{name'x'}", $d, $bad("name'x'", $inside)],
    ['quote behind a text', "{x 'y'z}", $d, $bad("x 'y'z", $open)],
    ['text with no end', "{a 'x}", $d, $bad("a 'x", $open)],
    ['quote as the last character', "{a '}", $d, $bad("a '", $open)],
    ['quote alone', "{'}", $d, $bad("'", $open)],
    ['name behind a text', "{a 'x' name}", $d, $bad("a 'x' name", $open)],
    ['closing brace in a text', "{x 'a}b'}", $d, $bad("x 'a", $open)],
    ['quotes are checked first', "{name a:::b c'd}", $d, $bad("name a:::b c'd", $inside)],
    ['white space is cut in the message', "{ {x\t 'y \n}", $d, $bad("x\t 'y", $open)],

    ['behind the one found nothing is parsed', '{name a:::b}', $d, 'Bob'],
    ['behind one not found the next is', "{x a:::b name 'y'}", $d, $colons],
    ['in a hidden block too', '{optional x}{x a:::b}{/optional}', $d, $colons],
    ['found before a star', '{dynamic rows}{name *::t a:::b}{/dynamic}', $d, 'BobBob'],

    ['star outside every loop', "{*::t name}{*::t 'x'}{n::* ''}{*::t  y}", $d, 'Bobx{*::t  y}'],
    ['key outside every loop', "{[*] name}{[*] 'x'}{x n::[*]}", $d, 'Bobx{x n::[*]}'],
    ['one of two', '{dynamic rows}{*::t *::u};{/dynamic}', $d, 'A;B;'],
    ['all data behind a star', '{dynamic rows}{*::t name};{/dynamic}', $d, 'A;Bob;'],
    ['missing before a star', "{dynamic rows}{x *::t y::z 'none'};{/dynamic}", $d, 'A;none;'],
    ['echo for one element', '{dynamic rows}{*::t  x};{/dynamic}', $d, 'A;{*::t  x};'],
    ['unknown loop name', "{dynamic rows}{n::*::t *::t 'x'};{/dynamic}", $d, 'A;x;'],
    ['key before a value', '{dynamic n,rows}{x n::[*] *::t}{/dynamic}', $d, '01'],
    ['an element that prints nothing is found', "{dynamic blank}{*::t name 'x'};{/dynamic}", $d, ';;;'],
    ['data that prints nothing is found late', "{dynamic rows}{*::x empty name 'x'};{/dynamic}", $d, ';;'],

    ['late error', '{*::t a:::b}', $d, $colons],
    ['late error for one element', '{dynamic rows}{*::t a:::b}{/dynamic}', $d, $colons],
    ['late error never reached', '{dynamic rows}{*::t *::u a:::b}{/dynamic}', $d, 'AB'],
    ['late error behind late data', '{dynamic rows}{*::x name a:::b}{/dynamic}', $d, 'BobBob'],
    ['late error in a loop that never runs', '{dynamic none}{*::t a:::b}{/dynamic}{dynamic x}{*::t a:::b}{/dynamic}', $d, ''],
    ['late error in a hidden block', '{optional x}{*::t a:::b}{/optional}', $d, ''],
    ['late error in a block hidden late', '{dynamic rows}{optional *::z}{*::z a:::b}{/optional}{*::t *::u}{/dynamic}', $d, 'AB'],
]);
?>
--EXPECT--
46 rows
