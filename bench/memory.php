<?php

// Renders the table page with very many rows in a fresh process; prints as JSON the size of
// the result and by how much the interpreter's memory and the process grew at the peak.
[, $engine, $build, $times] = $argv;
require __DIR__ . '/lib/pages.php';
$prepare = (require __DIR__ . "/engines/$engine.php")("$build/pages", "$build/cache/$engine");
$data = pageData("$build/pages", 'table');
$prepare('table', $data)();
$data['rows'] = array_merge(...array_fill(0, $times, $data['rows']));
$render = $prepare('table', $data);
gc_collect_cycles();

$status = fn (string $field) => (int) preg_replace("/.*$field:\s+(\d+) kB.*/s", '$1', file_get_contents('/proc/self/status')) * 1024;
file_put_contents('/proc/self/clear_refs', '5'); // sets the process's high-water mark to what it uses now
memory_reset_peak_usage();
$before = [memory_get_usage(), $status('VmRSS')];
$text = $render();
$peak = [memory_get_peak_usage(), $status('VmHWM')];
echo json_encode(['bytes' => strlen($text), 'php' => $peak[0] - $before[0], 'process' => $peak[1] - $before[1]]);
