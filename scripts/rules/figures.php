<?php

/*
 * Compares the manual's figures of speed with bench/RESULTS.md, and prints a line for each that differs or has no source.
 * --write puts in those that the results have.
 */

require dirname(__DIR__, 2) . '/bench/lib/figures.php';
$write = ($argv[1] ?? '') === '--write';
$faults = figureFaults($write);
if ($faults) {
    echo implode("\n", $faults), "\n", $write ? '' : "php scripts/rules/figures.php --write puts in what the results have\n";
    exit(1);
}
