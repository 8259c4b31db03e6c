--TEST--
Files and memory are given back on every way out
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put([
    'part.tpl' => '{v}{*::x *}', 'bad.tpl' => '{include part.tpl}{/dynamic}', 'open.tpl' => '{optional v}{include part.tpl}', 'late.tpl' => '{*::x a:::b}',
    'self.tpl' => '{optional v}{include self.tpl}{/optional}', 'full.tpl' => 'a{{{v}}}{dynamic n,l}{include part.tpl}{optional *}{[*]}{/optional}{/dynamic}',
]);
$texts = [
    'full.tpl', 'bad.tpl', 'open.tpl', 'late.tpl', 'self.tpl', 'gone.tpl', '',
    '{include full.tpl}{include gone.tpl}{include bad.tpl}', '{include full.tpl}{include open.tpl}', '{dynamic l}{include full.tpl}{include late.tpl}{/dynamic}',
    '{dynamic n,l}{dynamic m,l}{n::*}{m::[*]}{rawurlencode *}{htmlentities n::[*]}{addslashes m::*}{htmlspecialchars *}{/dynamic}{*::x x 1 \'y\'}{/dynamic}',
    '{htmlentities v}{addslashes v}{htmlspecialchars v}{rawurlencode v}{l}{i}{f}{o}', '{dynamic n,l}{dynamic n,l}', '{dynamic l}{*::x a:::b}{/dynamic}',
    '{optional x}{dynamic l}{htmlentities *}{/dynamic}', "{x y 'z'}{x 'y}", '{x{y', '{dynamic g}{dynamic *::r}{[*]}{*}{/dynamic}{/dynamic}', 'folder',
    '{x%s:::%n}', str_repeat("{dynamic l}{*::x 'text'}{optional *}{htmlspecialchars *}{/optional}{/dynamic}", 300) . str_repeat('long ', 3000),
];
mkdir(folder() . '/folder');
$d = ['v' => "<V'>", 'l' => ['a', '<b>', 3, 1.5, null, true], 'i' => 42, 'f' => 0.1, 'o' => new SplFileInfo('name'),
    'g' => [['r' => ['num' => (object) ['p' => 'q', 'r' => 1]]]]];

$all = function () use ($texts, $d): string {
    $results = '';
    foreach ($texts as $text) {
        foreach ([true, false] as $mode) {
            [$result] = outcome(fn() => template($text, $d, $mode));
            $results .= $result === null ? 'x' : '.';
        }
    }
    return $results;
};
// PHP's own table of resources grows at moments that depend on all that was ever opened.
$opened = array_map(fn() => fopen('php://memory', 'r'), range(1, 20));
unset($opened);
echo $all(), "\n";
$all();
$streams = count(get_resources());
$memory = memory_get_usage();
for ($i = 0; $i < 50; $i++) {
    $all();
}
echo 'streams ', count(get_resources()) - $streams, ', memory ', memory_get_usage() - $memory, "\n";
?>
--EXPECT--
...x.x.x.x.x.xxxxxxx.x.xxxxxxxxx.x.x.xxx.x
streams 0, memory 0
