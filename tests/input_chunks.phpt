--TEST--
Every position of a chunk border relative to braces, tags, white space and the end of input
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

// A stream is read in chunks; a file on disk in one buffer, and what is more in long steps.
const CHUNK = 4092;
const BUFFER = 4096;
const STEP = 65536;

/** Moves each probe over a border, one byte at a time: its answer moves along and stays the same. */
function over(array $borders, array $probes, array $data): Generator
{
    foreach ($borders as $border) {
        foreach ($probes as [$probe, $answer]) {
            for ($before = $border - strlen($probe) - 1; $before <= $border + 1; $before++) {
                $pad = str_repeat('x', $before);
                yield ["$before before $probe", $pad . $probe, $data, is_array($answer) ? $answer : $pad . $answer];
            }
        }
    }
}

/** Tags so long that their end moves over a border. */
function long_tags(array $borders, array $data): Generator
{
    foreach ($borders as $border) {
        for ($length = $border - 8; $length <= $border + 1; $length++) {
            $inside = str_repeat('y', $length);
            yield ["text of $length", "{x '$inside'}}}{v}", $data, "$inside}V"];
            yield ["name of $length", '{' . $inside . '}{{{v}', [$inside => 'long'] + $data, 'long{V'];
            yield ["white space of $length", '{v' . str_repeat(' ', $length) . '}{{', $data, 'V{'];
        }
    }
}

put(['part.tpl' => 'P']);
$d = ['v' => 'V', 'list' => ['a', 'b']];
table(over([CHUNK, 2 * CHUNK, BUFFER, BUFFER + STEP], [
    ['a{{b}}c{ d{v}e}f}{v}}}{{{v}}}', 'a{b}c{ dVe}f}V}{V}'],
    ["{\n{\r{\t{x 'q r'}{dynamic list}[{*}]{/dynamic}", "{\n{\r{\tq r[a][b]"],
    ['{{{{}}}}{{}{}{v}', '{{}}{}{}V'],
], $d));
table(over([CHUNK, BUFFER, BUFFER + STEP], [
    ['{include part.tpl}{!optional v}h{/optional}{x  y}', 'P{x  y}'],
    ['{', '{'],
    ['}', '}'],
    ['{v', 'V'],
    ['{v}', 'V'],
    ['{x{y}z', '{x{{{{}'],
    ['{optional v}y', fails('Missing closing tag in @')],
    ['{v}{/dynamic}', fails('Unexpected closing dynamic tag in @')],
], $d));
table(long_tags([CHUNK, 3 * CHUNK, BUFFER, BUFFER + STEP], $d));
?>
--EXPECT--
392 rows
336 rows
120 rows
