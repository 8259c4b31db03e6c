<?php

/**
 * Instructions that callgrind counts: a call of each page, by engine and page, a unit of each probe, and how the count grows.
 * The pages are counted with the module without vectors, too. The profiles stay in the build folder:
 * callgrind_annotate --threshold=100 FILE.
 */
function countInstructions(): array
{
    note('instructions');
    $counts = countWith(MODULE, 'callgrind', 'all');
    return $counts + ['without vectors' => countWith(MODULE_WITHOUT_VECTORS, 'callgrind-without-vectors', 'pages')['template']];
}

/** The counts with one build of the module; $what: "all", or "pages" for the engine's pages alone. */
function countWith(string $module, string $folder, string $what): array
{
    $folder = BUILD . "/$folder";
    is_dir($folder) || mkdir($folder);
    array_map('unlink', glob("$folder/*"));
    // Names in full, so that callgrind_annotate can read each file by itself.
    // The C library chooses its functions by the processor; without these it takes the same everywhere.
    output(
        ['valgrind', '-q', '--tool=callgrind', '--compress-strings=no', "--callgrind-out-file=$folder/out",
        ...phpCommand([$module, YARDSTICK]), dirname(__DIR__) . '/instructions.php', BUILD, $what],
        ['GLIBC_TUNABLES' => 'glibc.cpu.hwcaps=-AVX512F,-AVX2,-AVX,-AVX_Fast_Unaligned_Load,-ERMS']
    );
    $counts = $single = [];
    $files = glob("$folder/out.*");
    sort($files, SORT_NATURAL);
    foreach ($files as $file) {
        $text = file_get_contents($file);
        if (!preg_match('~^desc: Trigger: Client Request: (\d+) (\S+) (.+)$~m', $text, $label)) {
            unlink($file);
            continue;
        }
        [, $calls, $kind, $name] = $label;
        rename($file, "$folder/" . strtr("$kind $name", ' /', '--'));
        preg_match('~^totals: (\d+)~m', $text, $total);
        [$size, $units] = explode('/', "$kind/");
        match ($size) {
            'single' => $single[$name] = $total[1],
            'double' => $counts['unit'][$name] = [$total[1], $units],
            default => $counts[$kind][$name] = (int) round($total[1] / $calls),
        };
    }
    foreach ($counts['unit'] ?? [] as $name => [$double, $units]) {
        $counts['unit'][$name] = round(($double - $single[$name]) / $units, 2);
    }
    // What the second doubling adds, relative to twice what the first one does; where they add nearly nothing, the sums.
    foreach ($counts['x1'] ?? [] as $name => $once) {
        [$twice, $fourTimes] = [$counts['x2'][$name], $counts['x4'][$name]];
        $counts['growth'][$name] = $fourTimes < 1.5 * $once ? $fourTimes / $once : ($fourTimes - $twice) / 2 / ($twice - $once);
    }
    return $counts;
}

/** The counts of the engine that the baseline keeps: pages and units, by name. */
function ownCounts(array $counts): array
{
    $named = fn (array $pages, string $ending) => array_combine(array_map(fn ($page) => "page $page$ending", array_keys($pages)), $pages);
    return $named($counts['template'], '') + $counts['unit'] + $named($counts['without vectors'], ' without vectors');
}

/** Compares with the committed baseline; returns a line for each count that rose by more than 5 %, and for each that
 * doesn't grow linearly. */
function risenCounts(array $counts, array $baseline): array
{
    $risen = [];
    $own = ownCounts($counts);
    foreach ($baseline as $name => $before) {
        $now = $own[$name] ?? fail("the baseline has a count for \"$name\" that is no longer taken; run scripts/bench --baseline");
        if ($now > 1.05 * $before) {
            $risen[] = sprintf('%s: %s instructions, %s in the baseline (+%.1f %%)', $name, $now, $before, ($now / $before - 1) * 100);
        }
    }
    foreach ($counts['growth'] as $name => $rise) {
        if ($rise > 1.1) {
            $risen[] = sprintf('%s: a unit takes %.2f times as many instructions when there are twice as many', $name, $rise);
        }
    }
    return $risen;
}
