--TEST--
References that are refused: six messages, the order of the checks, the same in every tag
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$colons = fn(string $reference) => "'$reference': too many : in @";
$stars = fn(string $reference) => "'$reference': too many * in @";
$spaces = fn(string $reference) => "'$reference': too many namespaces in @";
$last = ': [*] must be last in @';
$first_star = ': too many * in @';
$first_space = ': too many namespaces in @';

$refused = [];
foreach (['::', ':::', '::::', 'a::', '::a', 'a:::', ':::a', 'a:::b', 'a::::b', 'a::b:::c', '::*', '::[*]', '*::', '[*]::',
    'n::*:::*', 'x::n:::*', '*:::a', 'a::b::', '::a::b'] as $reference) {
    $refused[$reference] = $colons($reference);
}
$refused += [
    '[*]::a' => $last,
    'n::[*]::a' => $last,
    'x::y::[*]::a' => $last,
    '*::[*]::a' => $last,
    'n::[*]::a::b' => $last,
    'a::*::b::*' => $stars('a::*::b::*'),
    'a::*::*' => $stars('a::*::*'),
    'n::[*]::*' => $stars('n::[*]::*'),
    'n::*::[*]' => $stars('n::*::[*]'),
    'x::[*]::a::*' => $stars('x::[*]::a::*'),
    '::*::*' => $stars('::*::*'),
    '*::a::*' => $first_star,
    '.*::a::*' => $first_star,
    '*::*' => $first_star,
    '.*::*' => $first_star,
    '*::[*]' => $first_star,
    '.*::[*]' => $first_star,
    '[*]::*' => $first_star,
    '[*]::[*]' => $first_star,
    '[*]::a::*' => $first_star,
    'y::x::n::*' => $spaces('y::x::n::*'),
    '*::x::n::*::a' => $spaces('*::x::n::*::a'),
    '::x::n::[*]' => $spaces('::x::n::[*]'),
    'x::n::*' => $first_space,
    'x::n::*::a' => $first_space,
    'x::n::[*]' => $first_space,
    'x::.*::*' => $first_space,
    '.*::n::x' => null,
    'n::*::.*' => null,
];
$tags = ['{%s}', "{x %s 'y'}", '{addslashes %s}', '{htmlentities %s}', '{htmlspecialchars %s}', '{rawurlencode %s}',
    '{include %s}', '{optional %s}{/optional}', '{!optional %s 1}{/optional}', '{dynamic %s}{/dynamic}', '{rdynamic n,%s}{/rdynamic}'];

$rows = [];
foreach ($refused as $reference => $message) {
    foreach ($message === null ? ['{addslashes %s}', '{optional %s}{/optional}'] : $tags as $tag) {
        $template = sprintf($tag, $reference);
        $rows[] = [$template, $template, [], $message === null ? '' : fails("Bad formated parameter$message")];
    }
}
table($rows);
table([
    ['blanks are part of the quoted reference', '{addslashes a:: :b:::c}', [], fails("Bad formated parameter'a:: :b:::c': too many : in @")],
    ['a whole text is part of it in an escaping tag', "{addslashes a::: 'x'}", [],
        fails("Bad formated parameter'a::: 'x'': too many : in @")],
    ['a star behind a blank is a name', '{addslashes *::a ::* b}', [], ''],
]);
?>
--EXPECT--
510 rows
3 rows
