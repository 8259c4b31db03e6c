<?php

// Runs under callgrind and has it write the instructions of each page and, when all is asked for, of each probe and of each
// series of growth in three sizes.
// A probe is rendered in a single and a double size, so that all but its unit cancels.
[, $build, $what] = $argv;
$all = $what === 'all';
require __DIR__ . '/lib/pages.php';
require __DIR__ . '/lib/series.php';
$rows = fn (int $n, mixed $value) => ['rows' => array_fill(0, $n, ['value' => $value])];
$cells = fn (string $tag, mixed $value) => [10000, fn ($size) => [
    '{dynamic rows}' . str_repeat($tag, 10 * $size) . '{/dynamic}', $rows(1000, $value),
]];
$probes = [ // name => [units in the single size, template and data of a size]
    'tag analysed' => [1000, fn ($size) => ['{dynamic rows}' . str_repeat('{*::value}', 1000 * $size) . '{/dynamic}', []]],
    'tag that the data settles' => [1000, fn ($size) => [str_repeat('{value}', 1000 * $size), ['value' => 'a short value']]],
    'row of a loop' => [1000, fn ($size) => ['{dynamic rows}.{/dynamic}', $rows(1000 * $size, 1)]],
    'plain variable rendered' => $cells('{*::value}', 'a short value'),
    'integer rendered' => $cells('{*::value}', 12345),
    'float rendered' => $cells('{*::value}', 1234.56),
    'escaped clean value' => $cells('{htmlspecialchars *::value}', 'twenty-five clean letters'),
    'escaped value with an ampersand' => $cells('{htmlspecialchars *::value}', 'twenty-five letters & one'),
    'optional section in a loop' => $cells('{optional *::value}.{/optional}', 'shown'),
    'literal byte' => [100000, fn ($size) => [str_repeat('some text ', 10000 * $size), []]],
    'escaped brace' => [10000, fn ($size) => [str_repeat('{{ text }} ', 5000 * $size), []]],
];

$count = function (string $name, int $calls, Closure $render): void {
    $render();
    $render();
    yardstick_count('warm');
    for ($i = 0; $i < $calls; $i++) {
        $render();
    }
    yardstick_count("$calls $name");
};
foreach (['template' => PAGES, 'php' => $all ? ['table', 'shop'] : []] as $engine => $pages) {
    $prepare = (require __DIR__ . "/engines/$engine.php")("$build/pages", '');
    foreach ($pages as $page) {
        $count("$engine $page", in_array($page, ['hello', 'includes', 'string', 'shop']) ? 20 : 3, $prepare($page, pageData("$build/pages", $page)));
    }
}
foreach ($all ? $probes : [] as $name => [$units, $make]) {
    foreach (['single', 'double'] as $i => $size) {
        [$text, $data] = $make($i + 1);
        file_put_contents("$build/probe.tpl", $text);
        $count("$size/$units $name", 1, fn () => template("$build/probe.tpl", $data));
    }
}
foreach ($all ? growthSeries("$build/growth") : [] as $name => [$sizes, $make]) {
    $least = min(intdiv(end($sizes), 4), max(1000, 10 * $sizes[0]));
    foreach ([1, 2, 4] as $times) {
        [$text, $data] = $make($least * $times);
        file_put_contents("$build/growth/growth.tpl", $text);
        $count("x$times $name", 1, fn () => template("$build/growth/growth.tpl", $data));
    }
}
