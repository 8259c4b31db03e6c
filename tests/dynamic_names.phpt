--TEST--
Names of dynamic blocks: clashes, scope, reuse through includes, keys and values of nested loops
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put([
    'same.tpl' => '{dynamic n,two}{n::*}{*}{n::[*]}{[*]} {/dynamic}', 'outer.tpl' => '[{n::*}{m::* \'-\'}]',
    'same_inside.tpl' => '{dynamic n,two}{dynamic n::*}{*}{/dynamic}{optional n::[*] 1}o{/optional}{/dynamic}',
    'twice.tpl' => '{dynamic n,two}{include same.tpl}{/dynamic}',
]);
$d = [
    'one' => ['k' => 'a'], 'two' => ['x', 'y'], 'deep' => ['A' => ['1' => ['p' => 'P', 'q' => 'Q'], '2' => ['r' => 'R']], 'B' => ['3' => ['s' => 'S']]],
    'rows' => [['in' => ['i'], 'n' => 'own'], ['in' => ['j', 'k']]],
];
$used = fn(string $reference) => fails("Dynamic block bad parameter '$reference': namespace is used already in @");

table([
    ['name inside its own block', '{dynamic n,one}{dynamic n,two}{/dynamic}{/dynamic}', $d, $used('two')],
    ['the reference is quoted as it stands', '{dynamic n,one}{rdynamic n, x,y ,z}{/rdynamic}{/dynamic}', $d, $used(' x,y ,z')],
    ['nothing behind the comma', '{dynamic n,one}{dynamic n,}{/dynamic}{/dynamic}', $d, $used('')],
    ['before the reference is parsed', '{dynamic n,one}{dynamic n,a:::b}{/dynamic}{/dynamic}', $d, $used('a:::b')],
    ['two blocks further in', '{rdynamic n,one}{dynamic two}{dynamic m,*}{dynamic n,*}{/dynamic}{/dynamic}{/dynamic}{/rdynamic}', $d, $used('*')],
    ['in a hidden block', '{dynamic n,one}{optional x}{dynamic n,two}{/dynamic}{/optional}{/dynamic}', $d, $used('two')],
    ['of a star loop', '{dynamic n,*::x}{dynamic n,two}{/dynamic}{/dynamic}', $d, $used('two')],
    ['the name of a block without data is free', '{dynamic n,x}{dynamic n,two::0}{dynamic n,one}{/dynamic}{/dynamic}{/dynamic}ok', $d, 'ok'],
    ['side by side in a loop', '{dynamic o,one}{dynamic n,two}{n::*}{/dynamic}{dynamic n,one}{n::*}{o::[*]}{/dynamic}{/dynamic}', $d, 'xyak'],
    ['case, length, blanks', '{dynamic n,one}{dynamic N,two}{dynamic nn,one}{dynamic n ,one}{n::*}{N::*}{nn::*} {/dynamic}{/dynamic}{/dynamic}{/dynamic}',
        $d, 'axa aya '],
    ['empty names never clash', '{dynamic ,one}{dynamic ,two}{dynamic two}{*}{/dynamic}{/dynamic}{/dynamic}', $d, 'xyxy'],

    ['in an included file the name is free; the outer block answers', '{dynamic n,one}{include same.tpl}{n::*}{/dynamic}', $d, 'axk0 ayk1 a'],
    ['behind the file it is taken again', '{dynamic n,one}{include same.tpl}{dynamic n,two}{/dynamic}{/dynamic}', $d, $used('two')],
    ['and behind its own block it is gone', "{dynamic n,one}{include same.tpl}{/dynamic}{dynamic l,two}{n::* '-'}{/dynamic}", $d, 'axk0 ayk1 --'],
    ['in reverse', '{rdynamic n,two}{include same.tpl}/{/rdynamic}', $d, 'yx10 yy11 /xx00 xy01 /'],
    ['for loops and conditions too', '{dynamic n,deep::A}{include same_inside.tpl};{/dynamic}', $d, 'PQoPQo;RR;'],
    ['a name of the including file', '{dynamic n,two}{include outer.tpl}{/dynamic}{include outer.tpl}', $d, '[x-][y-][{n::*}-]'],
    ['three of one name', '{dynamic n,one}{include twice.tpl}{/dynamic}', $d, 'axk0 ayk1 axk0 ayk1 '],

    ['keys of three loops', '{dynamic a,deep}{dynamic b,*}{dynamic c,*}{a::[*]}{b::[*]}{c::[*]}{[*]}{*} {/dynamic}{/dynamic}{/dynamic}', $d,
        'A1ppP A1qqQ A2rrR B3ssS '],
    ['reverse in the middle', '{dynamic a,deep}{rdynamic b,a::*}{dynamic c,b::*}{a::[*]}{b::[*]}{[*]} {/dynamic}{/rdynamic}{/dynamic}', $d,
        'A2r A1p A1q B3s '],
    ['from the outer element past the inner', '{dynamic a,deep}{dynamic b,two}{dynamic c,a::*}{b::*}{[*]}{a::[*]} {/dynamic}{/dynamic}{/dynamic}', $d,
        'x1A x2A y1A y2A x3B y3B '],
    ['behind an inner loop the outer key is back', '{dynamic a,deep}{dynamic b,*}{[*]}{/dynamic}{[*]}{a::[*]}{b::[*] \'-\'} {/dynamic}', $d, '12AA- 3BB- '],
    ['paths into outer elements', "{dynamic a,rows}{dynamic b,a::*::in}{a::*::n '-'}{a::*::in::1 '-'}{*} {/dynamic}{/dynamic}", $d, 'own-i -kj -kk '],
    ['an unnamed loop between', '{dynamic a,deep}{dynamic *}{dynamic *}{a::[*]}{[*]} {/dynamic}{/dynamic}{/dynamic}', $d, 'Ap Aq Ar Bs '],
    ['a name is no path', "{dynamic a,two}{a '-'}{a::0 '-'}{a::x '-'}{two::0}{/dynamic}", $d, '---x---x'],
    ['data of the name of a loop', '{dynamic one,two}{one::k}{one::*}{/dynamic}', $d, 'axay'],
]);
?>
--EXPECT--
26 rows
