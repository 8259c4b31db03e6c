--TEST--
template render --watch: renders again when a template, an included file or the data changes, and outlives errors
--EXTENSIONS--
template
ctype
mbstring
intl
--SKIPIF--
<?php require __DIR__ . '/tool.inc'; skipWithoutConsole(); ?>
--FILE--
<?php
require __DIR__ . '/tool.inc';

/** Whether a file comes to hold this text soon. */
function comesTo(string $file, callable $fits): bool
{
    for ($end = microtime(true) + (watcher() ? 60 : 10); microtime(true) < $end; usleep(20000)) {
        if (is_file($file) && $fits(file_get_contents($file))) {
            return true;
        }
    }
    return false;
}

put(['page.tpl' => '{include part.tpl}{a}', 'data.json' => '{"a": 1}']);
$command = 'render page.tpl data.json --watch -o out.html';
$process = startTool($command, [['file', '/dev/null', 'r'], ['file', 'output', 'w'], ['file', 'messages', 'w']]);
// [file, its new text, where the effect shows, the page or a part of the message]
$steps = [
    ['', '', 'out.html', '1'],
    ['part.tpl', 'now there ', 'out.html', 'now there 1'],
    ['data.json', '{"a": 23}', 'out.html', 'now there 23'],
    ['data.json', '{"a": ', 'messages', 'data.json:1:7: broken JSON'],
    ['data.json', '{"a": 4}', 'out.html', 'now there 4'],
    ['part.tpl', '{/optional}', 'messages', 'part.tpl:1:1: error: Unexpected closing optional tag'],
    ['part.tpl', '', 'out.html', '4'],
    ['page.tpl', '{a}{a}', 'out.html', '44'],
];
foreach ($steps as [$file, $text, $result, $page]) {
    $file === '' || put([$file => $text]);
    if (!comesTo($result, fn($got) => $result === 'messages' ? str_contains($got, $page) : $got === $page)) {
        echo "after $file: ", file_get_contents('out.html'), ' ', file_get_contents('messages'), "\n";
    }
}
echo proc_get_status($process)['running'] ? "still running\n" : "ended\n";
proc_terminate($process);
proc_close($process);
?>
--EXPECT--
still running
