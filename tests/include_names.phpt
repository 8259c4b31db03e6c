--TEST--
Includes: by name, through the data, silent skip, in optional and dynamic blocks
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put([
    'part.tpl' => 'P', 'other.tpl' => "O{v}\n", 'a b.tpl' => 'blank', 'a::b' => 'colons', 'empty.tpl' => '', '7' => 'seven',
    'row.tpl' => '({n::[*]}={*}{outer::*::t})', 'brace.tpl' => 'x{', 'closing.tpl' => 'x}', 'cut.tpl' => 'x{v',
    'dir/one.tpl' => '1{include two.tpl}{include dir/two.tpl}', 'dir/two.tpl' => 'near', 'two.tpl' => 'far',
    'chain.tpl' => '<{include part.tpl}{include gone.tpl}{include other.tpl}>', 'var.tpl' => '{include page}',
    'loop.tpl' => '{dynamic n,l}{include row.tpl}{/dynamic}', 'hide.tpl' => '{optional x}{include part.tpl}{/optional}',
]);
$d = ['v' => 'V', 'page' => 'part.tpl', 'pages' => ['main' => 'other.tpl'], 'l' => ['a', 'b'], 'zero' => "part.tpl\0.bak",
    'none' => '', 'gone' => 'gone.tpl', 'groups' => [['t' => 'T', 'l' => ['x', 'y']]]];

table([
    ['by name', 'a{include part.tpl}b', $d, 'aPb'],
    ['all of the file, in its place', "[{include \n other.tpl\t }]", $d, "[OV\n]"],
    ['through the data', '{include page}{include pages::main}', $d, "POV\n"],
    ['the data wins over the file', '{include part.tpl}', ['part.tpl' => 'other.tpl'], "O{v}\n"],
    ['a path that the data does not hold is a name', '{include a::b}{include pages::x}', $d, 'colons'],
    ['a blank in a name, a zero byte in the data', '{include a b.tpl}{include zero}', $d, 'blankP'],
    ['no file', 'a{include gone.tpl}b{include gone}c{include dir/gone/x}d', $d, 'abcd'],
    ['the empty key', '{include}', ['' => 'part.tpl'], 'P'],
    ['empty name in the data, empty file', 'a{include none}b{include empty.tpl}c', $d, 'abc'],
    ['an empty name under the empty key', 'a{include}b', ['' => ''], 'ab'],
    ['twice', '{include part.tpl}{include part.tpl}{include page}', $d, 'PPP'],
    ['braces do not reach over the end of a file', '{include brace.tpl}v}{include closing.tpl}}{include cut.tpl}}', $d, 'x{v}x}}xV}'],
    ['not from the folder of the file', '{include dir/one.tpl}', $d, '1farnear'],
    ['in a chain, a missing file between', '{include chain.tpl}{include var.tpl}', $d, "<POV\n>P"],

    ['in a shown and a hidden block', '{optional v}{include part.tpl}{/optional}{!optional v}{include part.tpl}{/optional}', $d, 'P'],
    ['hidden inside the file', '[{include hide.tpl}]', $d, '[]'],
    ['in a loop', '{dynamic n,l}{include row.tpl}{/dynamic}', $d, '(0=a{outer::*::t})(1=b{outer::*::t})'],
    ['a loop in the file', '{include loop.tpl}', $d, '(0=a{outer::*::t})(1=b{outer::*::t})'],
    ['in two loops', '{dynamic outer,groups}{dynamic n,*::l}{include row.tpl}{/dynamic}{/dynamic}', $d, '(0=xT)(1=yT)'],
]);
$rows = [];
foreach ([7, 1.5, true, false, null, [], ['other.tpl'], new SplFileInfo('other.tpl')] as $value) {
    $rows[] = [get_debug_type($value), '{include part.tpl}', ['part.tpl' => $value], 'P'];
}
$rows[] = ['integer that names a file', '{include x}{include 7}', ['x' => 7], 'seven'];
table($rows);

// A link that is switched within a process counts at once, whatever the way to the file and its length.
put(['was/page.tpl' => 'was {include leaf.tpl}', 'is/page.tpl' => 'is {include leaf.tpl}',
    'was/leaf.tpl' => str_repeat('before ', 1000), 'is/leaf.tpl' => str_repeat('after ', 1000)]);
set_include_path(getcwd() . '/link' . PATH_SEPARATOR . get_include_path());
foreach (['was', 'is', 'was'] as $folder) {
    symlink($folder, 'next');
    rename('next', 'link');
    foreach (['leaf.tpl', './link/page.tpl', getcwd() . '/link/page.tpl'] as $name) {
        echo substr(template($name, []), 0, 10), '|';
    }
}
unlink('link');
?>
--EXPECT--
19 rows
9 rows
before bef|was before|was before|after afte|is after a|is after a|before bef|was before|was before|
