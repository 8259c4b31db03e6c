<?php

// Engine::render beside the function alone, in one process, by turns. Prints the medians as JSON, in nanoseconds a call:
// of the function, of the engine, and of what the engine adds in each pair.
const PAIRS = 400;
const CALLS = 200;

[, $build] = $argv;
require __DIR__ . '/lib/pages.php';
require __DIR__ . '/lib/process.php';
require dirname(__DIR__) . '/library/autoload.php';

$folder = "$build/pages/hello";
$data = pageData("$build/pages", 'hello');
set_include_path($folder);
$engine = new Template\Engine($folder);
$calls = [fn () => template('page.tpl', $data), fn () => $engine->render('page.tpl', $data)];
if ($calls[0]() !== $calls[1]()) {
    fwrite(STDERR, "Engine::render renders another page than the function\n");
    exit(1);
}

/** Nanoseconds of a call. */
function timed(Closure $call): float
{
    $start = hrtime(true);
    for ($i = 0; $i < CALLS; $i++) {
        $call();
    }
    return (hrtime(true) - $start) / CALLS;
}

$times = [];
for ($pair = 0; $pair < PAIRS; $pair++) {
    $function = timed($calls[0]);
    $render = timed($calls[1]);
    $times[] = ['function' => $function, 'render' => $render, 'more' => $render - $function];
}
echo json_encode(array_map(fn ($name) => median(array_column($times, $name)), ['function' => 'function', 'render' => 'render', 'more' => 'more']));
