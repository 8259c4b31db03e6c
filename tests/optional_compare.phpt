--TEST--
Optional blocks with a compared value: quotes, blanks, integers, the types that never match
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

// [value, what stands behind the name, whether they match]
$compared = [
    ['red', " 'red'", true], ['red', ' red', true], ['red', " 'Red'", false], ['red', ' re', false], ['red', ' redd', false],
    ['red', ' red   ', true], ['red', '  red', false], [' red', '  red', true], ['red', "\t'red'", null],
    ['red', " 'red", false], ["'red", " 'red", true], ['red', " red'", false], ["red'", " red'", true],
    ['red', " xx'red'yy", true], ["it's", " 'it's'", true], ["a' 'b", " 'a' 'b'", true], ['a  b', ' a  b', true], [' a b ', " ' a b '", true],
    ['', " ''", true], ['x', " ''", false], ["'", " '''", true], ["'", " '", true], ["''", " ''''", true],
    ['a::b', ' a::b', true], ['*', ' *', true], ['a,b', ' a,b', true], ["\xC3\xA9", ' é', true], ["\xE9", ' é', false],
    ["red\0x", ' red', true], ["\0red", " ''", true], ['0', ' 0', true], ['0', ' 00', false], ['1', ' 1.0', false], ['5', ' +5', false],

    [3, ' 3', true], [3, ' 4', false], [3, " '3'", true], [3, ' 3abc', true], [3, ' 3.9', true], [3, '  3', true], [3, " ' 3'", true],
    [3, ' +3', true], [3, ' -3', false], [-3, ' -3', true], [3, ' --3', false], [3, ' 03', true], [10, ' 010', true], [8, ' 010', false],
    [0, ' 0x10', true], [16, ' 0x10', false], [1, ' 1e3', true], [0, ' abc', true], [1, ' abc', false], [0, " ''", true], [0, " '3", true],
    [3, " '3", false], [0, ' - 3', true], [0, ' -0', true], [3, " \u{a0}3", false],
    [PHP_INT_MAX, ' 9223372036854775807', true], [PHP_INT_MAX, ' 99999999999999999999', true], [PHP_INT_MAX - 1, ' 9223372036854775807', false],
    [PHP_INT_MIN, ' -9223372036854775808', true], [PHP_INT_MIN, ' -99999999999999999999', true], [4294967299, ' 3', false],

    [null, " ''", false], [null, ' 0', false], [null, ' null', false], [1.5, ' 1.5', false], [1.0, ' 1', false], [0.0, ' 0', false],
    [[], " ''", false], [['red'], ' Array', false], [['visible' => true], ' 1', false], [['visible' => 'red'], ' red', false],
    [new SplFileInfo('red'), ' red', false], [STDIN, ' 1', false],
];

$rows = [];
foreach ($compared as [$value, $behind, $match]) {
    $answer = $match ? 'y' : 'n';
    $what = json_encode($value, JSON_INVALID_UTF8_SUBSTITUTE | JSON_PARTIAL_OUTPUT_ON_ERROR) . $behind;
    $blocks = fn(string $name) => "{optional $name$behind}y{/optional}{!optional $name$behind}n{/optional}";
    $rows[] = ["$what, data", $blocks('v'), ['v' => $value], $answer];
    if ($match !== null) {
        $rows[] = ["$what, element", '{dynamic l}' . $blocks('*') . '{/dynamic}', ['l' => [$value]], $answer];
        $rows[] = ["$what, in an element", '{dynamic n,l}' . $blocks('n::*::v') . '{/dynamic}', ['l' => [['v' => $value]]], $answer];
    }
}
table($rows);
table([
    ['missing', "{optional x ''}y{/optional}{!optional x ''}n{/optional}{!optional x 1}n{/optional}", [], 'nn'],
    ['missing in an element', "{dynamic l}{optional *::x 0}y{/optional}{!optional *::x ''}n{/optional}{/dynamic}", ['l' => [[], 1]], 'nn'],
    ['the value is no reference', '{optional v w}y{/optional}{optional w v}y{/optional}', ['v' => 'x', 'w' => 'x'], ''],
    ['closing brace in a value', "{optional v 'a}b'}y{/optional}", ['v' => "'a"], "b'}y"],
]);
?>
--EXPECT--
229 rows
4 rows
