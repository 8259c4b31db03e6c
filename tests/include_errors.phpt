--TEST--
Includes: what is refused, circles, errors in included files and the name in each message
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put([
    'self.tpl' => 'x{include self.tpl}', 'a.tpl' => 'a{include b.tpl}', 'b.tpl' => 'b{include a.tpl }', 'data.tpl' => '{include again}',
    'dot.tpl' => '.{include ./dot.tpl}', 'to_main.tpl' => '{include main.tpl}', 'plain.tpl' => 'p',
    'syntax.tpl' => "line\n{v a:::b}{x a:::b}", 'quote.tpl' => "{a'b}", 'star.tpl' => '{include *::f}', 'bare.tpl' => '{include }',
    'open.tpl' => '{optional v}x', 'opendynamic.tpl' => '{dynamic x}', 'close.tpl' => 'x{/optional}',
    'closerdynamic.tpl' => '{/rdynamic}', 'cross.tpl' => '{optional v}{/dynamic}',
    'used.tpl' => '{dynamic n,l}{dynamic n,*}{/dynamic}{/dynamic}', 'key.tpl' => '{dynamic n::[*]}{/dynamic}',
    'deep.tpl' => '{include plain.tpl}{optional x}{include deeper.tpl}{/optional}', 'deeper.tpl' => '{include plain.tpl}{/rdynamic}',
    'late.tpl' => '{*::x a:::b}', 'deeplate.tpl' => '{include plain.tpl}{include late.tpl}',
]);
$d = ['v' => 'V', 'l' => [['y' => 1]], 'again' => 'data.tpl', 'page' => 'self.tpl'];
$bad = fn(string $rest) => fails("Include block bad parameter$rest");
$unexpected = fn(string $kind, string $file) => fails("Unexpected closing $kind tag in $file");

$rows = [];
foreach (['*', '.*', '[*]', '*::f', 'n::*', 'n::*::f::0', 'n::[*]'] as $reference) {
    $message = "Include block bad parameter '$reference': asterisk in filename is forbidden in @";
    $rows[] = [$reference, "{include $reference}", $d, fails($message)];
    $rows[] = ["$reference in a loop", "{dynamic n,x}{include $reference}{/dynamic}", $d, fails($message)];
}
table([
    ...$rows,
    ['asterisk in a file', '{include star.tpl}', $d, $bad(" '*::f': asterisk in filename is forbidden in star.tpl")],
    ['no name', 'x{include}', $d, $bad(': no parameter found in @')],
    ['no text under the empty key', '{include}', ['' => 5], $bad(': no parameter found in @')],
    ['no name in a file', '{include bare.tpl}', $d, $bad(': no parameter found in bare.tpl')],

    ['itself', '{include self.tpl}', $d, $bad(" 'self.tpl': circle is detected in self.tpl")],
    ['itself, through the data', '{include page}', $d, $bad(" 'self.tpl': circle is detected in self.tpl")],
    ['two files', '{include a.tpl}', $d, $bad(" 'a.tpl': circle is detected in b.tpl")],
    ['the argument is quoted, not the file', '{include data.tpl}', $d, $bad(" 'again': circle is detected in data.tpl")],
    ['another name of the same file', '{include dot.tpl}', $d, $bad(" './dot.tpl': circle is detected in ./dot.tpl")],
    ['in a hidden block', '{optional x}{include self.tpl}{/optional}', $d, $bad(" 'self.tpl': circle is detected in self.tpl")],

    ['syntax', '{include syntax.tpl}', $d, fails("Bad formated parameter'a:::b': too many : in syntax.tpl")],
    ['quote', '{include quote.tpl}', $d, fails("Variable block bad parameter 'a'b': ' is forbidden in variable in quote.tpl")],
    ['open at the end', '{include open.tpl}{/optional}', $d, fails('Missing closing tag in open.tpl')],
    ['loop open at the end', '{include opendynamic.tpl}{/dynamic}', $d, fails('Missing closing tag in opendynamic.tpl')],
    ['closes what the outer file opened', '{optional v}{include close.tpl}', $d, $unexpected('optional', 'close.tpl')],
    ['closes a reverse loop', '{rdynamic x}{include closerdynamic.tpl}', $d, $unexpected('rdynamic', 'closerdynamic.tpl')],
    ['closes the wrong block', '{dynamic x}{include cross.tpl}{/dynamic}', $d, $unexpected('dynamic', 'cross.tpl')],
    ['name used twice', '{include used.tpl}', $d, fails("Dynamic block bad parameter '*': namespace is used already in used.tpl")],
    ['key as a loop', '{include key.tpl}', $d, fails("Dynamic block bad parameter 'n::[*]': [*] is forbidden in key.tpl")],
    ['two files deep, in a hidden block', 'x{include deep.tpl}', $d, $unexpected('rdynamic', 'deeper.tpl')],
    ['behind an include', '{include plain.tpl}{include gone.tpl}{/optional}', $d, $unexpected('optional', '@')],
    ['open around an include', '{optional x}{include plain.tpl}', $d, fails('Missing closing tag in @')],

    ['late: names the rendering template', '{include late.tpl}', $d, fails("Bad formated parameter'a:::b': too many : in @")],
    ['two files deep', '{dynamic l}{*::y}{include deeplate.tpl}{/dynamic}', $d, fails("Bad formated parameter'a:::b': too many : in @")],
    ['a late error comes after all others', '{include late.tpl}{include close.tpl}', $d, $unexpected('optional', 'close.tpl')],
]);

$text = '{include x}';
table([
    ['the first name of a text is the text', fn() => template($text, ['x' => $text], true), null, $bad(" 'x': circle is detected in $text")],
    ['up to its zero byte', fn() => template($text, ['x' => "$text\0x"], true), null, $bad(" 'x': circle is detected in $text")],
    ['another name is a file', fn() => template("$text.", ['x' => $text], true), null, '.'],
    ['a file back to the first', fn() => template('to_main.tpl', ['main.tpl' => 'to_main.tpl']), null,
        $bad(" 'main.tpl': circle is detected in to_main.tpl")],
    ['under its absolute name', fn() => template(folder() . '/self.tpl', $d), null, $bad(" 'self.tpl': circle is detected in self.tpl")],
]);
?>
--EXPECT--
39 rows
5 rows
