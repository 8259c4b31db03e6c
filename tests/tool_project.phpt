--TEST--
template check in a project: the project file and its mistakes, pages and partials, baseline, --fail-on, --watch
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

/** What a command finds, one line each; or what it says in place of that. */
function found(string $arguments): array
{
    [, $output, $error] = tool("check -fjson $arguments");
    return $error === '' ? array_map(fn($line) => strtok($line, '~'), findings($output)) : [trim($error)];
}

/** Rows of [arguments, lines that begin so]. */
function rows(array $rows): void
{
    foreach ($rows as $what => [$arguments, $wanted]) {
        $got = found($arguments);
        $fits = count($got) === count($wanted)
            && array_filter($got, fn($line, $i) => !str_starts_with($line, $wanted[$i]), ARRAY_FILTER_USE_BOTH) === [];
        echo $fits ? '' : "$what: check $arguments\n  " . implode("\n  ", $got) . "\n";
    }
    echo count($rows), " rows\n";
}

// What is wrong with a project file is said with its place.
put(['p/page.tpl' => '{a}']);
foreach ([
    '{"pagse": ["p"]}' => ':1:2: "pagse" isn\'t known here; is "pages" meant?',
    '{"colour": 1}' => ':1:2: "colour" isn\'t known here; there are $schema, pages, names,',
    "{\n  \"pages\": \"p\"}" => ':2:3: this must be a list, not the text "p"',
    '{"pages": []}' => ':1:2: this list must not be empty',
    "{\"pages\": [\"p\",\n\"q\"]}" => ':2:1: pages: there is no file or folder "q"',
    '{"names": ["*.tpl", 3]}' => ':1:21: this must be a text, not 3',
    '{"includePath": ["p/page.tpl"]}' => ':1:18: includePath: there is no folder "p/page.tpl"',
    '{"data": {"*": "d.json"}}' => ':1:11: data: there is no file "d.json"',
    '{"warnings": {"missing-includes": "off"}}' => ':1:15: "missing-includes" isn\'t known here; is "missing-include" meant?',
    '{"warnings": {"missing-include": "of"}}' => ':1:15: "of" isn\'t allowed; choose one of "off", "warning", "error"',
    '{"security": 1}' => ':1:2: this must be true or false, not 1',
    '{"pages": ["p"],}' => ':1:17: broken JSON: unexpected }',
    '3' => ':1:1: this must be an object, not 3',
] as $text => $message) {
    put(['template.json' => $text]);
    [$status, $output, $error] = tool('check');
    if ($status !== 2 || $output !== '' || !str_starts_with($error, 'template: ' . getcwd() . "/template.json$message")) {
        echo "$text: $status $output $error\n";
    }
}

put([
    'template.json' => json_encode([
        'pages' => ['pages', 'extra.page'],
        'names' => ['*.tpl'],
        'includePath' => ['parts'],
        'data' => ['pages/shop.tpl' => 'sample/shop.json', 'pages/m/*' => 'sample/mail.json'],
        'warnings' => ['include-from-data' => 'off', 'cut-off-tag' => 'error'],
        'security' => true,
        'vouched' => ['html'],
    ]),
    'sample/shop.json' => '{"title": "x", "html": "y", "rows": [{"name": "n"}], "part": "named.tpl"}',
    'sample/mail.json' => '{"to": "me", "html": ""}',
    'pages/shop.tpl' => "{htmlspecialchars title}{html}{dynamic row,rows}{include row.tpl}{/dynamic}\n{include part}",
    'pages/m/a.tpl' => '{htmlspecialchars to}',
    'pages/m/b.tpl' => '{htmlspecialchars title}',
    'pages/left.html' => '{a::}',
    'extra.page' => '{htmlspecialchars anything}',
    'parts/row.tpl' => '{htmlspecialchars row::*::name}{htmlspecialchars row::*::nmae}',
    'parts/named.tpl' => '{htmlspecialchars title',
    'parts/ring.tpl' => '{include ring.tpl}',
    'sub/template.json' => '{"pages": ["."]}',
    'sub/own.tpl' => '{own}{cut',
    'outside.tpl' => '{html}',
]);
$nmae = 'parts/row.tpl:1:50-62 missing-value this finds nothing in the data';
$mail = 'pages/m/b.tpl:1:19-24 missing-value';
$named = 'parts/named.tpl:1:1-24 cut-off-tag the template ends inside this tag';
rows([
    'the project' => ['', [$mail, $named, $nmae]],
    'a partial in its page\'s loops and data' => ['parts/row.tpl', ["$nmae, so nothing is printed"]],
    'a page and what it includes' => ['pages/shop.tpl', [$named, $nmae]],
    'a page alone' => ['pages/m/a.tpl', []],
    'a file that belongs to nothing' => ['parts/ring.tpl', ['parts/ring.tpl:1:1-19 error Include block bad parameter']],
    'vouched for' => ['outside.tpl', []],
    'more' => ['outside.tpl parts/row.tpl --off missing-value', []],
    'other data' => ['pages/m --set title=x', ['pages/m/a.tpl:1:19-21 missing-value']],
    'another include path' => ['pages/shop.tpl -I sub --off missing-value', [
        'pages/shop.tpl:1:58-65 missing-include', 'pages/shop.tpl:2:10-14 missing-include',
    ]],
    'two projects' => ['pages/m sub', [$mail, 'sub/own.tpl:1:6-10 cut-off-tag']],
    'no project' => ['--no-project pages/m/b.tpl', []],
    'a project by name' => ['-p sub/template.json outside.tpl', []],
    'both' => ['-p sub/template.json --no-project', ['template: check: --project or --no-project, not both']],
]);
commands([
    ['check -e', 1, fn($got) => str_contains($got, "\n1 error and 0 warnings in 4 templates.\n"), ''],
    ['check --fail-on error', 1, fn($got) => str_contains($got, "\n1 error and 2 warnings in 4 templates.\n"), ''],
    ['check --fail-on error pages/m', 0, fn($got) => str_contains($got, 'missing-value'), ''],
    ['check --fail-on none', 2, '', "template: --fail-on none: choose one of error, warning\n"],
]);

// What is known stays quiet when lines move; what is new doesn't, alike or not.
$file = getcwd() . '/template-baseline.json';
commands([
    ['check --write-baseline', 0, "No findings in 4 templates.\n", "template: $file: 3 findings are known now\n"],
    ['check', 0, "No findings in 4 templates.\n", ''],
]);
put(['parts/row.tpl' => "\n\n<b>" . file_get_contents('parts/row.tpl'), 'pages/m/b.tpl' => str_repeat('{htmlspecialchars title} ', 2)]);
rows(['lines have moved, one is new' => ['', ['pages/m/b.tpl:1:44-49 missing-value']]]);
put(['pages/m/b.tpl' => '']);
commands([
    ['check', 0, "No findings in 4 templates.\n", "template: 1 finding of the baseline is gone; --write-baseline forgets what is gone\n"],
    // Those of files that weren't looked at stay.
    ['check pages/m --write-baseline', 0, "No findings in 2 templates.\n", "template: $file: 0 findings are known now\n"],
    ['check', 0, "No findings in 4 templates.\n", ''],
    ['check --baseline other.json --fail-on error', 1, fn($got) => str_contains($got, '1 error and 1 warning '), ''],
]);
put(['template-baseline.json' => '{"findings": [{}]}']);
commands([['check', 2, '', "template: $file: no baseline of \"template check --write-baseline\": \"file\" is missing\n"]]);
unlink('template-baseline.json');

// It watches the project: its file, its folders, its sample data.
$process = startTool('check --watch', [['file', '/dev/null', 'r'], ['file', 'output', 'a'], ['file', 'messages', 'a']]);
foreach ([
    ['', '', '1 error and 1 warning in 4 templates.'],
    ['pages/new.tpl', '{a::}', '2 errors and 1 warning in 5 templates.'],
    ['sample/shop.json', '{"title": "x", "html": "y", "rows": []}', '1 error and 1 warning in 5 templates.'],
    ['template.json', '{"pages"', 'broken JSON'],
    ['template.json', '{"pages": ["pages/m"]}', 'No findings in 2 templates.'],
] as $step) {
    [$name, $text] = $step;
    $wanted = end($step);
    file_put_contents('output', '');
    $name === '' || put([$name => $text]);
    $seen = false;
    for ($end = microtime(true) + (watcher() ? 60 : 10); !$seen && microtime(true) < $end; usleep(20000)) {
        $seen = str_contains(file_get_contents('output') . file_get_contents('messages'), $wanted);
    }
    echo $seen ? '' : "after $name: " . file_get_contents('output') . file_get_contents('messages') . "\n";
}
proc_terminate($process);
proc_close($process);
?>
--EXPECT--
13 rows
4 commands
2 commands
1 rows
4 commands
1 commands
