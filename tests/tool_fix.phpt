--TEST--
template check --fix: mends what has one right answer, and then the page is what was meant; the rest stays as it is
--EXTENSIONS--
template
ctype
mbstring
intl
--SKIPIF--
<?php require __DIR__ . '/tool.inc'; skipWithoutConsole(); ?>
--FILE--
<?php
require __DIR__ . '/tool.inc';

put(['part.tpl' => '(part)']);
$data = ['a' => '<', 'rows' => ['x' => ['n' => 1], 'y' => ['n' => 2]], 'outer' => [['in' => [1, 2]]]];
// Each row: a template, what it becomes, the page it then makes with the data above.
$rows = [
    'quotes around a key' => ["{dynamic rows}{optional [*] 'x'}!{/optional}{/dynamic}", '{dynamic rows}{optional [*] x}!{/optional}{/dynamic}', '!'],
    'it is not known which key' => ["{dynamic rows}{optional [*] x'}!{/optional}{!optional [*] ' x'}{/optional}{/dynamic}", null, ''],
    'quotes around a value are right' => ["{optional a '<'}!{/optional}", null, '!'],
    'blanks at a comma' => ["{dynamic r \t,\n rows}{r::*::n}{/dynamic}", '{dynamic r,rows}{r::*::n}{/dynamic}', '12'],
    'a blank that keeps names apart' => [
        '{dynamic r,outer}{dynamic r ,r::*::in}{*}{/dynamic}{/dynamic}', null, '12',
    ],
    'one of two' => [
        '{dynamic r,outer}{dynamic r , r::*::in}{*}{/dynamic}{/dynamic}',
        '{dynamic r,outer}{dynamic r ,r::*::in}{*}{/dynamic}{/dynamic}', '12',
    ],
    'case of keywords' => ['{HTMLSpecialChars a}{Dynamic rows}{*::n}{/DYNAMIC}', '{htmlspecialchars a}{dynamic rows}{*::n}{/dynamic}', '&lt;12'],
    'another slip may be a name' => ['{htmlspecialchar a}', null, '<'],
    'quotes around a file' => ["{include 'part.tpl'}", '{include part.tpl}', '(part)'],
    'the end of a section' => ["{!optional none}!{/!optional}", '{!optional none}!{/optional}', '!'],
    'double quotes; no quotes' => ['{include "part.tpl"}{include file=part.tpl}', '{include part.tpl}{include file=part.tpl}', '(part)'],
    'the end of another section' => ["{optional a}!{/!optional}{/optional}", "{optional a}!{/!optional}{/optional}", '!{/!optional}'],
    'an end of nothing' => ['{/!optional}', null, '{/!optional}'],
    'bytes, line ends, no line at the end' => ["\xE9 {Optional a}\r\n日本{/Optional}\r\n", "\xE9 {optional a}\r\n日本{/optional}\r\n", "\xE9 \r\n日本\r\n"],
];
foreach ($rows as $what => [$template, $wanted, $page]) {
    put(['page.tpl' => $template]);
    $diff = tool('check page.tpl --fix --dry-run')[1];
    $untouched = file_get_contents('page.tpl') === $template;
    put(['patched.tpl' => $template, 'page.diff' => $diff]);
    $diff === '' || exec('patch -s --binary patched.tpl page.diff', $lines, $status);
    $wanted ??= $template;
    tool('check page.tpl --fix');
    $got = file_get_contents('page.tpl');
    [$text] = outcome(fn() => template('page.tpl', $data));
    if (!$untouched || $got !== $wanted || file_get_contents('patched.tpl') !== $wanted || $text !== $page) {
        echo "$what: ", json_encode([$untouched, $got, file_get_contents('patched.tpl'), $text], JSON_INVALID_UTF8_SUBSTITUTE), "\n";
    }
}
echo count($rows), " rows\n";

// A long file: parts that lie apart; files that are included; what is left is reported.
$lines = array_fill(0, 40, "<p>\n");
$lines[3] = $lines[6] = $lines[26] = "{Optional a}{/Optional} {0}\n";
put(['long.tpl' => implode('', array_slice($lines, 0, 30)) . '{include page.tpl}', 'page.tpl' => '{Addslashes a}']);
[$status, $diff, $error] = tool('check long.tpl --fix --dry-run');
echo "$status $error", $diff;
commands([
    ['check long.tpl --fix', 1, fn($got) => str_contains($got, 'integer-index'), "template: mended 7 places in 2 files\n"],
    ['check long.tpl --fix --dry-run', 0, '', ''],
    ['check long.tpl --dry-run', 2, '', "template: check: --dry-run goes with --fix\n"],
    ['check - --fix', 2, '', "template: check: --fix needs files; the standard input is none\n", '{Optional a}'],
]);
echo file_get_contents('page.tpl'), "\n";
?>
--EXPECT--
14 rows
1 --- long.tpl
+++ long.tpl
@@ -1,10 +1,10 @@
 <p>
 <p>
 <p>
-{Optional a}{/Optional} {0}
+{optional a}{/optional} {0}
 <p>
 <p>
-{Optional a}{/Optional} {0}
+{optional a}{/optional} {0}
 <p>
 <p>
 <p>
@@ -24,7 +24,7 @@
 <p>
 <p>
 <p>
-{Optional a}{/Optional} {0}
+{optional a}{/optional} {0}
 <p>
 <p>
 <p>
--- page.tpl
+++ page.tpl
@@ -1,1 +1,1 @@
-{Addslashes a}
\ No newline at end of file
+{addslashes a}
\ No newline at end of file
4 commands
{addslashes a}