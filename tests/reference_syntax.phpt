--TEST--
References that are accepted: paths, star and key markers, what is an ordinary component
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = [
    'a' => ['b' => ['c' => 'deep'], '.*' => 'dot', 'b:' => 'behind', '*x' => 'near', '[*' => 'half'], 'a:b' => ['c' => 'middle'],
    ':' => 'colon', ':a' => ['b' => 'before'], '**' => 'stars', '*x' => 'starx', '..*' => 'dots', '[*]x' => 'keyx', '[**]' => 'key2',
    'x y' => 'blank', 'q' => ['x y' => ['z' => 'inner']], 'é' => ['ü' => 'high'], "it's" => 'quote', 'a,b' => 'comma',
    'r' => [['t' => ['A', 'B'], '.*' => 'D', '*x' => 'S', 'n' => ['r' => 'in']]], 'two' => ['x', 2],
];
$loop = fn(string $body): string => "{dynamic r,r}$body{/dynamic}";

table([
    ['paths', '{a::b::c} {é::ü} {a::b::c::d} {a::c}', $d, 'deep high {a::b::c::d} {a::c}'],
    ['colons inside a component', '{a:b::c} {:} {:a::b} {a::b:}', $d, 'middle colon before behind'],
    ['a star among others is a name', '{**} {*x} {a::*x} {..*} {a::.*}', $d, 'stars starx near dots dot'],
    ['brackets among others are a name', '{[*]x} {[**]} {a::[*}', $d, 'keyx key2 half'],
    ['blanks belong to a component', '{addslashes x y}{addslashes q::x y::z}{addslashes q:: x y::z}', $d, 'blankinner'],
    ['a quote, a comma', "{htmlspecialchars it's}{a,b}", $d, 'quotecomma'],

    ['star', $loop('{*::t::0}{.*::t::1}{r::*::t::0}{r::*::n::r}'), $d, 'ABAin'],
    ['dot star behind a star is a name', $loop('{*::.*}{r::*::.*}{*::*x}'), $d, 'DDS'],
    ['dot star in front is no name', $loop("{r::.*::t 'none'}"), $d, 'none'],
    ['key', $loop('{[*]}{r::[*]}'), $d, '00'],
    ['star alone', "{dynamic n,two}{* '-'}{.*}{n::*} {/dynamic}", $d, 'xxx 222 '],
]);
?>
--EXPECT--
11 rows
