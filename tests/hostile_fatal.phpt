--TEST--
User code that ends the request in the middle of a call: memory is given back, the next call works
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/child.inc';

// What a call holds is a megabyte at least: it shows when a part is left behind. At the end there is another call.
$prelude = sprintf('require %s; require %s;', var_export(__DIR__ . '/table.inc', true), var_export(__DIR__ . '/spy.inc', true)) . <<<'PHP'

    register_shutdown_function(function () use (&$before): void {
        $left = memory_get_usage() - $before;
        SpyStream::$deeds = [];
        $text = template('{dynamic n,l}{n::*}{include spy://x}{/dynamic}', ['l' => [1, 2]], true);
        echo ' | ', $left < 500000 ? '' : "$left bytes left, ", $text;
    });
    $long = str_repeat('literal ', 1 << 17);
    $rows = [1, new Spy($deed), 2];
    $at = [];
    $mode = true;
    PHP;
$call = '$before = memory_get_usage(); spied($at, $t, $d, $mode); echo "went on";';
$places = [
    'conversion' => '$t = "$long{spy}"; $d = ["spy" => $rows[1]];',
    'element' => '$t = "$long{dynamic l}$long{*}{/dynamic}"; $d = ["l" => $rows];',
    'nested element' => '$t = "{dynamic m,l}$long{dynamic m::*}{htmlentities *}{/dynamic}{/dynamic}"; $d = ["l" => [[1, 2], $rows]];',
    'property' => '$t = "$long{dynamic l}{dynamic *}{*}{/dynamic}{/dynamic}"; $d = ["l" => [["num" => (object) $rows]]];',
    'handler' => 'set_error_handler($deed); $t = "$long{a}"; $d = ["a" => []];',
    'handler of the error' => 'set_error_handler($deed); $t = "{/optional}"; $d = [];',
    'opening' => '$at["open"] = $deed; $t = "$long{include spy://x}"; $d = [];',
    'reading' => '$at["read"] = $deed; put(["main.tpl" => "$long{include spy://x}"]); $t = "main.tpl"; $d = []; $mode = false;',
    'filter that closes its file' => '$at["filter"] = fn() => [onStreams("pclose"), $deed()]; $t = "$long{include php://filter/read=spy/resource=spy://x}"; $d = [];',
    'closing' => '$at["close"] = $deed; put(["main.tpl" => "$long{dynamic l}{include spy://x}{/dynamic}"]); $t = "main.tpl"; $d = []; $mode = false;',
    'closing after an error' => '$at["close"] = $deed; put(["main.tpl" => "$long{include spy://{/dynamic}}"]); $t = "main.tpl"; $d = []; $mode = false;',
    'end of a walk' => '$r = [new Last($deed), new Spy(function () use (&$r) { $r = null; })]; $t = "$long{dynamic l}{*}{/dynamic}"; $d = ["l" => &$r];',
    'call inside a call' => '$t = "$long{dynamic l}{*}{/dynamic}"; $d = ["l" => [new Spy(fn() => template($t, ["l" => $rows], true))]];',
];
$deeds = [
    'exit' => ['exit(7);', 7, ''],
    'fatal error' => ["restore_error_handler();\n@trigger_error('fatal', E_USER_ERROR);", 255, "Fatal error: fatal in %s on line %d\n "],
    'memory' => ["str_repeat('x', 1 << 29);", 255, "Fatal error: Allowed memory size of 134217728 bytes exhausted%s(tried to allocate %d bytes) in %s on line %d\n "],
    'exception' => ["throw new LogicException('thrown');", 255, "Fatal error: Uncaught LogicException: thrown in %s\n  thrown in %s on line %d\n "],
];

$rows = [];
foreach ($places as $where => $setting) {
    foreach ($deeds as $how => [$code, $status, $message]) {
        $message = '/^' . strtr(preg_quote($message, '/'), ['%s' => '.*?', '%d' => '\d+']) . '/s';
        $rows[] = ["$how: $where", fn() => preg_replace($message, '',
            child("\$deed = function () {\n$code\nreturn true;\n};\n$prelude\n$setting\n$call", '-d memory_limit=128M')), null, "| 1x2x | exit $status"];
    }
}
table($rows);

$limited = fn(string $what, string $code): array => [$what, fn() => preg_replace('/ in \S+ on line \d+/', '',
    child("\$deed = null;\n$prelude\n\$before = 1 << 30; set_time_limit(1);\n$code\necho 'went on';")), null,
    "Fatal error: Maximum execution time of 1 second exceeded\n | 1x2x | exit 255"];
table([
    $limited('in a loop', 'template(str_repeat("{dynamic l}", 4) . str_repeat("{/dynamic}", 4), ["l" => range(1, 9000)], true);'),
    $limited('waiting for a stream that never has anything', '$pipes = fn() => array_filter(scandir("/proc/self/fd"),
        fn($fd) => str_starts_with((string) @readlink("/proc/self/fd/$fd"), "pipe:"));
        $others = $pipes(); $cat = proc_open(["cat"], [["pipe", "r"], ["pipe", "w"]], $ends); stream_set_blocking($ends[1], false);
        template("php://fd/" . max(array_diff($pipes(), $others)), []);'),
]);
?>
--EXPECT--
52 rows
2 rows
