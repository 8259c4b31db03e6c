--TEST--
The playground's server: what it answers, what it refuses, and in which words
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

$good = $server->render(
    ['page.tpl' => "<p>{a}</p>{dynamic l}{*}{/dynamic}\n{include part/b.tpl}{x::}", 'part/b.tpl' => '{optional x}b'],
    '{"a": "ä", "l": [1, 2]}'
);
compare('an error: status, page, message', [200, null, ['Missing closing tag in part/b.tpl']],
    [$good['status'], $good['page'], $good['messages']]);
$first = $good['findings'][1] ?? [];
compare('its place', ['part/b.tpl', 1, 1, 13, 'error', 'Missing closing tag'], array_map(fn($key) => $first[$key] ?? null,
    ['file', 'line', 'column', 'endColumn', 'severity', 'message']));
compare('the other one', ['page.tpl', 2, 21], array_map(fn($key) => $good['findings'][0][$key] ?? null, ['file', 'line', 'column']));

$good = $server->render(
    ['page.tpl' => '<p>{a}</p>{dynamic l}{*}{/dynamic}{include part/b.tpl}', 'part/b.tpl' => '{htmlentities a}'],
    '{"a": "ä", "l": [1, [2]]}'
);
compare('a page', [200, '<p>ä</p>1Array&auml;', 21, null], [$good['status'], $good['page'], $good['size'], $good['stopped']]);
compare('what PHP had to say', ['Array to string conversion'], $good['messages']);
compare('the time of the call', true, $good['nanoseconds'] > 1000 && $good['nanoseconds'] < 1e9);
compare('the tree', ['{a}', '{dynamic l}', '{include part/b.tpl}'], array_column($good['tree'], 'tag'));
compare('what lies in it', ['{htmlentities a}', 'part/b.tpl'],
    [$good['tree'][2]['children'][0]['tag'], $good['tree'][2]['children'][0]['file']]);
compare('bytes that are not UTF-8', "\u{FFFD}", $server->render('{htmlspecialchars a}{rawurlencode b}' . "{'\u{FFFD}'}")['page']);

foreach ([
    ['broken JSON', '{"page.tpl": "x"}', "{\n \"a\": [1, }", 422, 'data.json:2:11: broken JSON: unexpected }'],
    ['no array', '{"page.tpl": "x"}', '7', 422, 'data.json:1:1: the data must be an object'],
    ['no page', '{"other.tpl": "x"}', '{}', 400, 'no templates'],
    ['no text', '{"page.tpl": ["x"]}', '{}', 422, 'Names of files'],
    ['a name with ..', '{"page.tpl": "", "../x": ""}', '{}', 422, 'Names of files'],
    ['.. inside', '{"page.tpl": "", "a/../../x": ""}', '{}', 422, 'Names of files'],
    ['an absolute name', '{"page.tpl": "", "/tmp/x": ""}', '{}', 422, 'Names of files'],
    ['a hidden file', '{"page.tpl": "", ".htaccess": ""}', '{}', 422, 'Names of files'],
    ['a NUL byte', '{"page.tpl": "", "a\u0000b": ""}', '{}', 422, 'Names of files'],
    ['a line break', '{"page.tpl": "", "a\n": ""}', '{}', 422, 'Names of files'],
    ['a stream', '{"page.tpl": "", "php://memory": ""}', '{}', 422, 'Names of files'],
    ['a long name', '{"page.tpl": "", "' . str_repeat('a', 81) . '": ""}', '{}', 422, 'Names of files'],
    ['a file that is a folder, too', '{"page.tpl": "", "a": "", "a/b": ""}', '{}', 422, "can't be named a/b"],
    ['the other way round', '{"page.tpl": "", "a/b": "", "a": ""}', '{}', 422, "can't be named a:"],
    ['41 files', json_encode(array_fill_keys(['page.tpl', ...array_map(fn($i) => "f$i", range(1, 40))], '')), '{}', 413, '40 files'],
    ['a long template', json_encode(['page.tpl' => str_repeat('x', 300000)]), '{}', 413, '256 kB'],
    ['giant data', '{"page.tpl": ""}', '[' . str_repeat('1,', 4000000) . '1]', 413, '256 kB'],
    ['deep data', '{"page.tpl": ""}', str_repeat('[', 100000) . str_repeat(']', 100000), 422, 'nested deeper than 512 levels'],
] as [$what, $files, $data, $status, $words]) {
    $answer = $server->decoded($server->send('POST', '/api/render', '{"files":' . $files . ',"data":' . json_encode($data) . '}',
        ['Content-Type' => 'application/json']));
    if ($answer['status'] !== $status || !str_contains($answer['error'] ?? '', $words)) {
        compare($what, [$status, $words], $answer);
    }
}

$own = "127.0.0.1:$server->port";
foreach ([
    ['the page', 'GET', '/', [], 200],
    ['under its other name', 'GET', '/', ['Host' => "localhost:$server->port"], 200],
    ['a name that another site leads here', 'GET', '/', ['Host' => "example.invalid:$server->port"], 403],
    ['from its own page', 'POST', '/api/render', ['Origin' => "http://$own", 'Content-Type' => 'application/json'], 400],
    ["from another site's page", 'POST', '/api/render', ['Origin' => 'http://example.invalid', 'Content-Type' => 'application/json'], 403],
    ['a form', 'POST', '/api/render', ['Content-Type' => 'text/plain'], 415],
    ['no request for this', 'GET', '/api/render', [], 404],
    ['a file of the server', 'GET', '/router.php', [], 404],
    ['a file of the system', 'GET', '/../../../../../../etc/passwd', [], 404],
    ['another way there', 'GET', '/%2e%2e/%2e%2e/%2e%2e/%2e%2e/etc/passwd', [], 404],
] as [$what, $method, $path, $headers, $status]) {
    [$got, $body] = $server->answer($server->send($method, $path, $method === 'POST' ? '{}' : '', $headers));
    compare($what, [$status, true], [$got, $status === 200 ? $body === 'the page' : isset(json_decode($body)->error)]);
}

compare('leftovers', [], $server->leftovers());
compare('its end', true, $server->stop());
echo "done\n";
?>
--EXPECT--
done
