--TEST--
References that are refused: six messages, the order of the checks, the same in every tag
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$colons = ['::', ':::', '::::', 'a::', '::a', 'a:::', ':::a', 'a:::b', 'a::::b', 'a::b:::c', '::*', '::[*]', '*::', '[*]::', 'n::*:::*',
    'x::n:::*', '*:::a', 'a::b::', '::a::b'];
$stars = ['a::*::b::*', 'a::*::*', 'n::[*]::*', 'n::*::[*]', 'x::[*]::a::*', '::*::*'];
$namespaces = ['y::x::n::*', '*::x::n::*::a', '::x::n::[*]'];
$refused = [];
foreach (['too many :' => $colons, 'too many *' => $stars, 'too many namespaces' => $namespaces] as $message => $references) {
    foreach ($references as $reference) {
        $refused[$reference] = "'$reference': $message";
    }
}
$refused += array_fill_keys(['[*]::a', 'n::[*]::a', 'x::y::[*]::a', '*::[*]::a', 'n::[*]::a::b'], ': [*] must be last')
    + array_fill_keys(['*::a::*', '.*::a::*', '*::*', '.*::*', '*::[*]', '.*::[*]', '[*]::*', '[*]::[*]', '[*]::a::*'], ': too many *')
    + array_fill_keys(['x::n::*', 'x::n::*::a', 'x::n::[*]', 'x::.*::*'], ': too many namespaces');
$tags = ['{%s}', "{x %s 'y'}", '{addslashes %s}', '{htmlentities %s}', '{htmlspecialchars %s}', '{rawurlencode %s}',
    '{include %s}', '{optional %s}{/optional}', '{!optional %s 1}{/optional}', '{dynamic %s}{/dynamic}', '{rdynamic n,%s}{/rdynamic}'];

$rows = [];
foreach ($refused as $reference => $message) {
    foreach ($tags as $tag) {
        $rows[] = [sprintf($tag, $reference), sprintf($tag, $reference), [], fails("Bad formated parameter$message in @")];
    }
}
table([
    ...$rows,
    ['blanks are part of the reference', '{addslashes a:: :b:::c}', [], fails("Bad formated parameter'a:: :b:::c': too many : in @")],
    ['quotes too', "{addslashes a::: 'x'}", [], fails("Bad formated parameter'a::: 'x'': too many : in @")],
    ['but not in a condition', '{optional a:::b c:::d}{/optional}', [], fails("Bad formated parameter'a:::b': too many : in @")],
    ['not refused', '{addslashes .*::n::x}{addslashes n::*::.*}{addslashes *::a ::* b}', [], ''],
]);
?>
--EXPECT--
510 rows
