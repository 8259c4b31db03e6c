--TEST--
Percent signs in messages: a doubled one is one, a directive is printed as it is written
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['50%%.tpl' => '{/dynamic}', '%s%n.tpl' => '{x a%d:::b}', '%%s.tpl' => '{include %%s.tpl}']);
$closing = 'Unexpected closing optional tag in ';
$in_text = fn(string $what, string $text, string $message): array => [$what, fn() => template($text, ['v' => 'V'], true), null, fails($message)];

$rows = [];
foreach (['%s', '%d', '%i', '%u', '%x', '%X', '%o', '%c', '%e', '%f', '%g', '%G', '%H', '%p', '%n', '%Z', '%ld', '%lu', '%lld', '%zu', '%td',
    '%5d', '%-10s', '%05d', '%+d', '%.3f', '%.*f', '%*d', '%-*.*s', '%.tp', '%10.4s'] as $directive) {
    $rows[] = $in_text($directive, "<$directive>{/optional}", "$closing<$directive>{/optional}");
}
table([
    ...$rows,
    $in_text('doubled', '100%%{/optional}', "{$closing}100%{/optional}"),
    $in_text('four', '%%%%s{/optional}', "$closing%%s{/optional}"),
    $in_text('three', '%%%s{/optional}', "$closing%%s{/optional}"),
    $in_text('many', str_repeat('%s%n%%', 200) . '{/optional}', $closing . str_repeat('%s%n%', 200) . '{/optional}'),
    $in_text('in a quoted reference', '{x a%s:::%%b}', "Bad formated parameter'a%s:::%b': too many : in {x a%s:::%b}"),
    ['missing file', fn() => template('no%s%%.tpl', []), null, fails('Could not open file no%s%.tpl')],
    ['included file', fn() => template('{include 50%%.tpl}', [], true), null, fails('Unexpected closing dynamic tag in 50%.tpl')],
    ['file and reference', fn() => template('%s%n.tpl', []), null, fails("Bad formated parameter'a%d:::b': too many : in %s%n.tpl")],
    ['file in a circle', fn() => template('%%s.tpl', []), null, fails("Include block bad parameter '%s.tpl': circle is detected in %s.tpl")],
    ['a text is no format', fn() => template('100%% %s %n{v}', ['v' => '%d%%'], true), null, '100%% %s %n%d%%'],
]);
?>
--EXPECT--
41 rows
