<?php

// Prints as JSON how the time of a call grows: {series: {size: nanoseconds per unit}}.
// The text is read from a file.
[, $folder, $quick] = $argv;
require __DIR__ . '/lib/series.php';

$result = [];
foreach (growthSeries($folder) as $name => $set) {
    [$sizes, $make, $units] = $set + [2 => null];
    foreach ($sizes as $size) {
        [$text, $data] = $make($size);
        file_put_contents("$folder/growth.tpl", $text);
        $samples = [];
        $end = hrtime(true) + ($quick ? 2e7 : 2e8);
        do {
            $start = hrtime(true);
            template("$folder/growth.tpl", $data) ?? exit(1);
            $samples[] = hrtime(true) - $start;
        } while (hrtime(true) < $end || count($samples) < 5);
        sort($samples);
        $result[$name][$size] = $samples[intdiv(count($samples), 2)] / ($units ?? $size);
    }
}
echo json_encode($result);
