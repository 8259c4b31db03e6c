<?php

/**
 * What may grow: name => [sizes, template text and data of a size, units when the size isn't their number]. Writes the
 * files that the templates include.
 */
function growthSeries(string $folder): array
{
    is_dir($folder) || mkdir($folder, 0777, true);
    set_include_path($folder);
    file_put_contents("$folder/leaf.tpl", "<p>a leaf</p>\n");
    for ($i = 1; $i <= 500; $i++) {
        file_put_contents("$folder/chain$i.tpl", $i > 1 ? '<i>{include chain' . ($i - 1) . '.tpl}</i>' : '<b></b>');
    }

    $names = array_combine(array_map(fn ($i) => "name$i", range(0, 99)), array_fill(0, 100, 'a short value'));
    $yes = ['yes' => true, 'list' => [['x' => 1]]];
    return [
        'rows of a loop' => [[10, 100, 1000, 10000, 100000], fn ($n) => [
            '{dynamic rows}<li>{*::id} {htmlspecialchars *::name}</li>{/dynamic}',
            ['rows' => array_map(fn ($i) => ['id' => $i, 'name' => "name $i"], range(1, $n))],
        ]],
        'bytes of text' => [[10000, 100000, 1000000, 10000000], fn ($n) => [
            substr(str_repeat("div.box {{ margin: 0; padding: 4px 8px; color: red }} /* a comment of the page */\n", intdiv($n, 80) + 1), 0, $n - $n % 82), [],
        ]],
        'tags that the data settles' => [[10, 100, 1000, 10000, 100000], fn ($n) => [
            implode("\n", array_map(fn ($i) => '{name' . $i % 100 . '}', range(1, $n))), $names,
        ]],
        'tags in a loop' => [[10, 100, 1000, 10000, 100000], fn ($n) => ['{dynamic list}' . str_repeat("{*::x}\n", $n) . '{/dynamic}', $yes]],
        'nested optional blocks' => [[1, 10, 100, 500], fn ($n) => [str_repeat('{optional yes}<i>', $n) . str_repeat('</i>{/optional}', $n), $yes]],
        'nested loops' => [[1, 10, 100, 500], fn ($n) => [
            implode('', array_map(fn ($i) => "{dynamic level$i,list}<i>", range(1, $n))) . '{level1::*::x}' . str_repeat('</i>{/dynamic}', $n), $yes,
        ]],
        'components of a path' => [[1, 10, 100, 1000], fn ($n) => ['{' . implode('::', array_fill(0, $n, 'k')) . '}', array_reduce(range(1, $n), fn ($v) => ['k' => $v], 'x')]],
        'keys of the data (1000 tags)' => [[10, 100, 1000, 10000, 100000], fn ($n) => [
            implode("\n", array_map(fn ($i) => '{key' . $i * 7919 % $n . '}', range(1, 1000))),
            array_combine(array_map(fn ($i) => "key$i", range(0, $n - 1)), range(1, $n)),
        ], 1000],
        'includes side by side' => [[1, 10, 100, 1000], fn ($n) => [str_repeat("{include leaf.tpl}\n", $n), []]],
        'includes in a chain' => [[1, 10, 100, 500], fn ($n) => ["{include chain$n.tpl}", []]],
        'failing includes' => [[1, 10, 100, 1000], fn ($n) => [str_repeat("{include no-such-file.tpl}\n", $n), []]],
    ];
}
