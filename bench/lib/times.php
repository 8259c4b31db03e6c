<?php

/** Renders every page once with every engine; ends the benchmark when two texts differ by more than white space. */
function checkPages(array $engines, array $pages): array
{
    is_dir(BUILD . '/out') || mkdir(BUILD . '/out');
    $bytes = [];
    $texts = [];
    foreach ($engines as $engine) {
        $worker = new Worker($engine);
        foreach ($pages as $page) {
            $file = BUILD . "/out/$page.$engine";
            $worker->time($page, 1, $file);
            $text = preg_replace('/\s+/', '', file_get_contents($file));
            $texts[$page] ??= [$engine, $text];
            if ($text !== $texts[$page][1]) {
                $same = strspn($text ^ $texts[$page][1], "\0");
                fail("page $page: $engine and {$texts[$page][0]} render different texts, from \""
                    . substr($text, $same, 40) . '" and "' . substr($texts[$page][1], $same, 40) . '" on; see ' . BUILD . '/out');
            }
            $bytes[$page] ??= filesize($file);
        }
    }
    return $bytes;
}

/**
 * Median nanoseconds of a call, by page and engine. The engines take turns, so that drift of the
 * machine hits all alike; three sets of processes for each page, because memory falls differently
 * in each. The data of another page in the same process would decide whether PHP maps and unmaps
 * memory for each large text, which a server's process, after a few requests, does not.
 */
function measureTimes(array $engines, array $pages, int $rounds): array
{
    $samples = [];
    for ($set = 1; $set <= 3; $set++) {
        foreach ($pages as $page) {
            note("times: $page, $set of 3");
            $asked = $page === 'string' ? array_diff($engines, ['yardstick']) : $engines; // no file, nothing to read
            $workers = array_combine($asked, array_map(fn ($engine) => new Worker($engine), $asked));
            $calls = array_map(fn ($worker) => callsPerSample($worker, $page), $workers);
            for ($round = 0; $round < $rounds / 3; $round++) {
                foreach ($workers as $engine => $worker) {
                    $samples[$page][$engine][] = $worker->time($page, $calls[$engine]) / $calls[$engine];
                }
            }
        }
    }
    return array_map(fn ($engines) => array_map('median', $engines), $samples);
}

/** How many calls take two milliseconds or more, once the engine is warm. */
function callsPerSample(Worker $worker, string $page): int
{
    $worker->time($page, 20);
    for ($calls = 1; ($time = $worker->time($page, $calls)) < 2e6;) {
        $calls = (int) ceil($calls * min(8, 2.4e6 / $time));
    }
    return $calls;
}
