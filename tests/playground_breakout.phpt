--TEST--
The playground: no template opens anything but its own files, or takes more than its share
--EXTENSIONS--
template
--SKIPIF--
<?php
require __DIR__ . '/playground.inc';
skipWithoutServer();
?>
--FILE--
<?php
require __DIR__ . '/playground.inc';
$server = new Server();
put(['secret.tpl' => 'secret']);
$root = playgroundRoot();
$around = folder();

// The name of a file, once in the tag and once from the data.
foreach ([
    '/etc/passwd', '../../../../../../../../etc/passwd', '././../../../../../../../../etc/passwd', 'parts/../../../../../../../../etc/passwd',
    'file:///etc/passwd', 'FILE:///etc/passwd', 'file://localhost/etc/passwd', '/proc/self/root/etc/passwd', '/dev/stdin', '/dev/zero',
    '/proc/self/environ', '/proc/self/cmdline', '/proc/self/maps', '/proc/self/cwd/../data.json', '../data.json', '../../server.log',
    "$around/secret.tpl", "$root/playground/server/router.php", "$root/README.md", 'worker.php', 'Sandbox.php', 'start.php',
    'php://filter/read=convert.base64-encode/resource=/etc/passwd', 'php://filter/resource=page.tpl', 'php://stdin', 'php://input',
    'php://fd/0', 'php://memory', 'PHP://filter/resource=/etc/passwd', 'data:text/plain,secret', 'data://text/plain;base64,c2VjcmV0',
    'glob:///etc/pass*', 'phar:///etc/passwd', 'compress.zlib:///etc/passwd', 'zip:///etc/passwd#x', 'ftp://127.0.0.1/secret',
    "http://127.0.0.1:$server->port/", 'https://127.0.0.1/', 'expect://id', 'ssh2.sftp://x', 'parts/',
] as $name) {
    $answer = $server->render(['page.tpl' => "[{include $name}{include box}]", 'parts/a.tpl' => 'a'], json_encode(['box' => $name]));
    // A folder opens, but can't be read.
    $expected = $name === 'parts/' ? null : '[]';
    compare($name, [200, $expected, null], [$answer['status'], $answer['page'], $answer['stopped']]);
    $told = json_encode([$answer['messages'], $answer['unreadable']], JSON_UNESCAPED_SLASHES);
    if (str_contains($told, $server->scratch) || str_contains($told, "$root/")) {
        echo "$name tells where the server's files lie: $told\n";
    }
}
// The rows above are no proof unless a file that may be included is included.
$own = ['page.tpl' => '[{include parts/a.tpl}{include box}]', 'parts/a.tpl' => 'a'];
compare('its own file', '[aa]', $server->render($own, '{"box": "./parts/a.tpl"}')['page']);

// A link that lies among the templates, which no request can make.
mkdir(folder() . '/request/files', 0777, true);
put(['request/data.json' => '{}', 'request/files/page.tpl' => '[{include link.tpl}{include folder/secret.tpl}{include b.tpl}]',
    'request/files/b.tpl' => 'b']);
symlink(folder() . '/secret.tpl', folder() . '/request/files/link.tpl');
symlink(folder(), folder() . '/request/files/folder');
$command = [PHP_BINARY, '-n', '-d', 'extension=' . modulePath(), '-d', 'include_path=.', "$root/playground/server/worker.php", 'render', folder() . '/request'];
$worker = proc_open($command, [1 => ['pipe', 'w']], $pipes);
compare('links', '[b]', json_decode(stream_get_contents($pipes[1]), true)['page'] ?? null);
proc_close($worker);
array_map(unlink(...), [folder() . '/request/files/link.tpl', folder() . '/request/files/folder']);

$twice = ['page.tpl' => '{include f1}'];
for ($i = 1; $i < 38; $i++) {
    $next = $i + 1;
    $twice["f$i"] = "{include f$next}{include f$next}";
}
$ten = json_encode(['l' => range(0, 9), 'long' => str_repeat('x', 100000)]);
$loops = static fn(int $depth, string $body): array =>
    ['page.tpl' => str_repeat('{dynamic l}', $depth) . $body . str_repeat('{/dynamic}', $depth)];
$deep = ['page.tpl' => str_repeat('{optional x}', 20000)];
$started = microtime(true);
$waiting = [
    'loops without end' => [$server->sendTemplates($loops(15, ''), $ten), 'took more than 2 seconds'],
    'includes without end' => [$server->sendTemplates($twice), 'took more than 2 seconds'],
    'a page beyond the memory' => [$server->sendTemplates($loops(4, '{long}'), $ten), 'needed more than 64 MB'],
    'a page of 10 MB' => [$server->sendTemplates($loops(2, '{long}'), $ten), 'is larger than 1 MB'],
    'deep nesting' => [$server->sendTemplates($deep), null],
];
foreach ($waiting as $what => [$socket, $words]) {
    $answer = $server->decoded($socket);
    compare("$what: status, page", [200, null], [$answer['status'], $answer['page'] ?? null]);
    if ($words === null ? !$answer['messages'] : !str_contains($answer['stopped'] ?? '', "The page $words")) {
        compare($what, $words, $answer['stopped'] ?? $answer);
    }
}
compare('all in time', true, microtime(true) - $started < 25);
compare('the next page', 'well', $server->render('well')['page']);

compare('leftovers', [], $server->leftovers());
compare('its end', true, $server->stop());
echo "done\n";
?>
--EXPECT--
done
