<?php

/*
 * worker.php COUNT renders so many templates of changing size in one process, as a worker does that never ends. It ends
 * with status 1 when a result is wrong or when the process's resident memory grows by more than 1 MB after a tenth.
 */

function residentKilobytes(): int
{
    return (int) preg_replace('/^.*?VmRSS:\s*(\d+).*$/s', '$1', file_get_contents('/proc/self/status'));
}

$count = (int) $argv[1];
mt_srand(1);
$before = 0;
for ($i = 0; $i < $count; $i++) {
    // Mostly small, now and then large; every tenth fails.
    $rows = mt_rand(1, 10) < 10 ? mt_rand(0, 20) : mt_rand(0, 400);
    $text = str_repeat('text ', mt_rand(0, 10) < 10 ? mt_rand(0, 50) : mt_rand(0, 20000));
    $end = $i % 10 === 0 ? '' : '{/dynamic}';
    $result = @template("$text{dynamic rows}<{htmlspecialchars *::name}>$end", [
        'rows' => array_fill(0, $rows, ['name' => 'a & b']),
    ], true);
    if ($result !== ($end === '' ? null : $text . str_repeat('<a &amp; b>', $rows))) {
        echo "a wrong result in call $i\n";
        exit(1);
    }
    if ($i === intdiv($count, 10)) {
        unset($rows, $text, $result);
        $before = residentKilobytes();
    }
}
unset($rows, $text, $result);
$after = residentKilobytes();
echo "a worker that never ends: $count templates, $before kB after a tenth, $after kB at the end\n";
exit($after > $before + 1024 ? 1 : 0);
