<?php

// Prints as JSON what large results cost in a process of its own: {what: {bytes, time: nanoseconds, faults: fresh pages that
// the kernel handed over}}, each the median of calls. Every result is dropped before the next call, as between requests.
[, $folder] = $argv;
is_dir($folder) || mkdir($folder, 0777, true);
$rows = fn (int $n) => [
    '{dynamic rows}<li>{*::id} {htmlspecialchars *::name}</li>{/dynamic}',
    ['rows' => array_map(fn ($i) => ['id' => $i, 'name' => "name $i"], range(1, $n))],
];
$pages = [
    '10,000 rows' => $rows(10000),
    '300,000 rows' => $rows(300000),
    '10 MB of text' => [str_repeat("div.box {{ margin: 0; padding: 4px 8px; color: red }} /* a comment of the page */\n", 125000), []],
];
$result = [];
foreach ($pages as $name => [$text, $data]) {
    file_put_contents("$folder/large.tpl", $text);
    $times = $faults = [];
    for ($i = 0; $i < 25; $i++) {
        $before = getrusage()['ru_minflt'];
        $start = hrtime(true);
        $page = template("$folder/large.tpl", $data) ?? exit(1);
        $times[] = hrtime(true) - $start;
        $faults[] = getrusage()['ru_minflt'] - $before;
        $bytes = strlen($page);
        $page = null;
    }
    sort($times);
    sort($faults);
    $result[$name] = ['bytes' => $bytes, 'time' => $times[12], 'faults' => $faults[12]];
}
echo json_encode($result);
