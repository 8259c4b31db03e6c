<?php

// The benchmark; scripts/bench builds what it needs and calls it.
const SECTIONS = ['times', 'library', 'web', 'memory', 'growth', 'instructions'];

/** Thrown rather than printed at once, so that workers and servers are ended on the way out. */
function fail(string $message): never
{
    throw new RuntimeException($message);
}

set_exception_handler(function (Throwable $error): void {
    fwrite(STDERR, 'bench: ' . ($error instanceof RuntimeException ? $error->getMessage() : $error) . "\n");
    exit(2);
});

function note(string $message): void
{
    if (stream_isatty(STDERR)) {
        fwrite(STDERR, "\r\033[K$message");
    }
}

foreach (['pages', 'process', 'times', 'process_costs', 'instructions', 'targets', 'report', 'chart', 'figures'] as $file) {
    require __DIR__ . "/lib/$file.php";
}
[, $module, $withoutVectors, $yardstick, $build] = $argv;
define('MODULE', $module);
define('MODULE_WITHOUT_VECTORS', $withoutVectors);
define('YARDSTICK', $yardstick);
define('BUILD', $build);

$options = ['pages' => PAGES, 'only' => SECTIONS];
for ($i = 5; $i < $argc; $i++) {
    [$name, $value] = explode('=', $argv[$i], 2) + [1 => null];
    if (in_array($name, ['--quick', '--check', '--baseline', '--write'])) {
        $options[substr($name, 2)] = true;
    } elseif (in_array($name, ['--pages', '--only'])) {
        $choice = $name === '--pages' ? PAGES : SECTIONS;
        $chosen = array_filter(explode(',', $value ?? $argv[++$i] ?? ''));
        $options[substr($name, 2)] = $chosen && !array_diff($chosen, $choice) ? $chosen : fail("$name takes a list of: " . implode(',', $choice));
    } else {
        fail("no such option: $argv[$i]; there are --quick, --pages LIST, --only LIST, --write, --check and --baseline");
    }
}
$write = isset($options['write']);
if ($write && ($options['pages'] != PAGES || $options['only'] != SECTIONS || isset($options['quick']))) {
    fail('--write needs a whole run: leave out --quick, --pages and --only');
}

preparePages("$build/pages");
foreach (ENGINES as $engine) {
    array_map('unlink', array_filter(glob("$build/cache/$engine/{,*/}*", GLOB_BRACE), 'is_file'));
    is_dir("$build/cache/$engine") || mkdir("$build/cache/$engine", 0777, true);
}

$baseline = __DIR__ . '/baseline.json';
if (isset($options['check'])) {
    $risen = risenCounts(countInstructions(), json_decode(file_get_contents($baseline), true));
    echo implode("\n", $risen ?: ['No instruction count rose by more than 5 %, and all grow linearly.']), "\n";
    exit($risen ? 1 : 0);
}
if (isset($options['baseline'])) {
    file_put_contents($baseline, json_encode(ownCounts(countInstructions()), JSON_PRETTY_PRINT) . "\n");
    exit;
}

$quick = isset($options['quick']);
$results = ['bytes' => checkPages(ENGINES, array_unique([...$options['pages'], ...REQUESTED, 'table'])), 'rounds' => $quick ? 6 : 60];
$visited = [...ENGINES, 'fixed', 'nothing'];
foreach ($options['only'] as $section) {
    note($section);
    $results += match ($section) {
        'times' => ['times' => measureTimes([...ENGINES, 'yardstick'], $options['pages'], $results['rounds'])],
        'library' => ['library' => json_decode(output([...phpCommand([MODULE]), __DIR__ . '/library.php', BUILD]), true) + ['most' => 2000]],
        'web' => measureWeb($visited, $quick ? 100 : 2000) + ['cold' => measureCold($visited, $quick ? 5 : 30)],
        'memory' => ['memory' => measureMemory(ENGINES), 'large' => measureLarge($quick)],
        'growth' => ['growth' => measureGrowth($quick)],
        'instructions' => ['instructions' => countInstructions()],
    };
}
note('');
$report = report($results);
echo $report;
if ($write) {
    file_put_contents(__DIR__ . '/RESULTS.md', "# Benchmark results\n\nWritten by `scripts/bench --write` on: " . machine() . ".\n\n"
        . "![Time of a call and of a whole request relative to plain PHP](results.svg)\n\n$report");
    file_put_contents(__DIR__ . '/results.svg', chart($results['times'], $results['beyond']));
    $faults = figureFaults(true);
    $faults && fail("the results are written, but figures of the manual need a hand:\n" . implode("\n", $faults));
}
