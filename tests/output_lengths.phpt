--TEST--
Texts, values and names of every length, side by side: nothing is lost, doubled or moved
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

// No two places of such a text look the same.
$text = fn(int $length, int $seed = 0): string => substr(strrev(implode('', range(1000 + $seed, 1200 + $seed))), 0, $length);

$rows = [];
foreach ([...range(0, 70), 127, 128, 129, 255, 256, 600] as $length) {
    $before = $text($length);
    $value = $text($length, 300);
    $data = ['v' => $value, 'l' => [['a' => $value, 'b' => $value . '<'], ['a' => '', 'b' => $before]]];
    $rows[] = ["text and data of $length", "$before{v}$before{x '$value'}{v}$before", $data, $before . $value . $before . $value . $value . $before];
    $rows[] = ["text and elements of $length",
        "$before{dynamic l}$before{*::a}$value{htmlspecialchars *::b}{optional *::a}$before{/optional}{/dynamic}$before", $data,
        $before . $before . $value . $value . $value . '&lt;' . ($value ? $before : '') . $before . $value . $before . $before];
    $rows[] = ["echo of $length", "{dynamic l}{*::x n$before}{x  $before y}{/dynamic}", $data, str_repeat("{*::x n$before}{x  $before y}", 2)];

    // Names that differ in one place only, each at the same place of its row.
    $name = "n$before";
    $near = ["{$name}x", "{$name}y", "{$name}z", $name, "m$before", "{$name}xx"];
    $data = ['l' => array_map(fn($key) => [substr(" $key", 1) => $key], $near)];
    $rows[] = ["names of $length", "{dynamic l}{*::{$name}x '-'}{*::{$name} '-'},{/dynamic}", $data, "{$name}x-,--,--,-$name,--,--,"];
}
$long = array_map($text, range(0, 800));
$rows[] = ['growing', '{dynamic l}{*}{dynamic l}{/dynamic}{/dynamic}', ['l' => $long], implode('', $long)];
$rows[] = ['growing while reading', implode('', array_map(fn($place) => "{l::$place}", array_keys($long))), ['l' => $long], implode('', $long)];
table($rows);
?>
--EXPECT--
310 rows
