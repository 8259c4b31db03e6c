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

/** Median nanoseconds of a call, by page and engine. The engines take turns, so that drift of the machine hits all alike. */
function measureTimes(array $engines, array $pages, int $rounds): array
{
    $workers = [];
    foreach ($engines as $engine) {
        $workers[$engine] = new Worker($engine);
    }
    $times = [];
    foreach ($pages as $page) {
        note("times: $page");
        $calls = $samples = [];
        $asked = $page === 'string' ? array_diff_key($workers, ['yardstick' => 0]) : $workers; // no file, nothing to read
        foreach ($asked as $engine => $worker) {
            for ($n = 1; ($time = $worker->time($page, $n)) < 2e6; $n = (int) ceil($n * min(8, 2.4e6 / $time)));
            $calls[$engine] = $n;
        }
        for ($round = 0; $round < $rounds; $round++) {
            foreach ($asked as $engine => $worker) {
                $samples[$engine][] = $worker->time($page, $calls[$engine]) / $calls[$engine];
            }
        }
        $times[$page] = array_map('median', $samples);
    }
    return $times;
}
