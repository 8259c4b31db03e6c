--TEST--
References that are accepted: paths, star and key markers, what is an ordinary component
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = [
    'a' => ['b' => ['c' => 'deep'], '.*' => 'dot', 'b:' => 'behind', '*x' => 'near', '[*' => 'half'],
    'a:b' => ['c' => 'middle'], ':' => 'colon', ':a' => ['b' => 'before'], '**' => 'stars', '*x' => 'starx', '..*' => 'dots',
    '[*]x' => 'keyx', '[**]' => 'key2', 'x y' => 'blank', 'é' => ['ü' => 'high'], 'q' => ['x y' => ['z' => 'inner']],
    ' v' => 'leading', 'v' => 'plain', "it's" => 'quote', 'a,b' => 'comma',
    'r' => [
        ['t' => ['A', 'B'], '.*' => 'D', '*x' => 'S', 'n' => ['r' => 'in']],
    ],
];
$loop = fn(string $body): string => "{dynamic r,r}$body{/dynamic}";

table([
    ['path of three', '{a::b::c}', $d, 'deep'],
    ['colon inside a component', '{a:b::c}', $d, 'middle'],
    ['a colon alone', '{:}', $d, 'colon'],
    ['colon first', '{:a::b}', $d, 'before'],
    ['colon last', '{a::b:}', $d, 'behind'],
    ['dot star behind the first component', '{a::.*}', $d, 'dot'],
    ['a star among others is a name', '{**}{*x}{a::*x}{..*}', $d, 'starsstarxneardots'],
    ['brackets among others are a name', '{[*]x}{[**]}{a::[*}', $d, 'keyxkey2half'],
    ['high bytes', '{é::ü}', $d, 'high'],
    ['a comma', '{a,b}', $d, 'comma'],
    ['blanks belong to a component', '{addslashes x y}{addslashes q::x y::z}{addslashes q:: x y::z}', $d, 'blankinner'],
    ['a quote in an escaping tag', "{htmlspecialchars it's}", $d, 'quote'],
    ['a blank behind the keyword does not', '{addslashes  v}', $d, 'plain'],
    ['path that ends early or late', '{a::b::c::d}{a::c}', $d, '{a::b::c::d}{a::c}'],

    ['star', $loop('{*::t::0}{.*::t::1}'), $d, 'AB'],
    ['star with a namespace', $loop('{r::*::t::0}{r::*::n::r}'), $d, 'Ain'],
    ['dot star behind a star is a name', $loop('{*::.*}{r::*::.*}{*::*x}'), $d, 'DDS'],
    ['key', $loop('{[*]}{r::[*]}'), $d, '00'],
    ['dot star as namespace of nothing', $loop("{r::.*::t 'none'}"), $d, 'none'],
    ['bare star', '{dynamic a}{* \'-\'}{.*}{/dynamic}', ['a' => ['x', 2]], 'xx22'],
    ['bare star with a namespace', '{dynamic n,a}{n::*}{/dynamic}', ['a' => ['x', 2]], 'x2'],
]);
?>
--EXPECT--
21 rows
