<?php

/**
 * Instructions that callgrind counts: a call of each page, by engine and page, and a unit of each probe.
 * The profiles stay in the build folder: callgrind_annotate --threshold=100 FILE.
 */
function countInstructions(): array
{
    note('instructions');
    $folder = BUILD . '/callgrind';
    is_dir($folder) || mkdir($folder);
    array_map('unlink', glob("$folder/*"));
    // Names in full, so that callgrind_annotate can read each file by itself.
    // The C library chooses its functions by the processor; without these it takes the same everywhere.
    output(
        ['valgrind', '-q', '--tool=callgrind', '--compress-strings=no', "--callgrind-out-file=$folder/out",
        ...phpCommand([MODULE, YARDSTICK]), dirname(__DIR__) . '/instructions.php', BUILD],
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
    foreach ($counts['unit'] as $name => [$double, $units]) {
        $counts['unit'][$name] = round(($double - $single[$name]) / $units, 2);
    }
    return $counts;
}

/** The counts of the engine that the baseline keeps: pages and units, by name. */
function ownCounts(array $counts): array
{
    $pages = array_map(fn ($page) => "page $page", array_keys($counts['template']));
    return array_combine($pages, $counts['template']) + $counts['unit'];
}

/** Compares with the committed baseline; returns a line for each count that rose by more than 5 %. */
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
    return $risen;
}
