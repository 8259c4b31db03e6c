--TEST--
What comes with the tool: help, completion, the man page, the function's documentation; starting without its needs
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

$root = toolRoot();
put(['x.css' => 'p { color: red } {}', 'brace.html' => '<style>@media{p{color:red}}']);
$has = static fn(string $part): Closure => static fn(string $got): bool => str_contains($got, $part);
commands([
    ['--version', 0, 'template ' . phpversion('template') . "\n", ''],
    ['', 0, $has("  check       Finds what is wrong in templates\n"), ''],
    ['check --help', 0, $has('The exit status is 0 when nothing was found'), ''],
    ['render --string x --ansi', 0, 'x', ''],
    ['literal', 0, "a {{b}}\0}}\xFF{{", '', "a {b}\0}\xFF{"],
    ['literal x.css', 0, 'p { color: red } {}', ''],
    ['literal - --check', 1, $has('standard input:2:3: a template reads this brace'), '', "p { }\nq {r: s}"],
    ['literal --check x.css', 0, '', ''],
    ['literal gone.css', 2, '', "template: gone.css: no such file\n"],
    ['literal .', 2, '', "template: .: this is a folder\n"],
    ['check brace.html -f json', 1, $has('"offset": 15,'), ''],
    ['explain quoted-key --ansi', 0, $has("\e[33;1mquoted-key"), ''],
    ['explain quoted-key', 0, static fn(string $got): bool => !str_contains($got, "\e"), ''],
]);

/** What bash offers for these words. */
function completed(string $words): string
{
    put(['bin/template' => "#!/bin/sh\nexec " . phpCommand() . ' ' . escapeshellarg(toolRoot() . '/bin/template') . ' "$@"']);
    chmod('bin/template', 0755);
    $script = 'eval "$(template completion)"; COMP_WORDS=(' . $words . '); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _template;'
        . ' echo "${COMPREPLY[*]}"';
    return trim((string) shell_exec('PATH=$PWD/bin:$PATH bash -c ' . escapeshellarg($script) . ' 2>&1'));
}
foreach ([
    'template re' => 'render',
    'template check --fo' => '--format',
    'template check --format ""' => 'text json checkstyle github sarif',
    'template check --fail-on er' => 'error',
    'template check --format = che' => 'checkstyle',
    'template check x --off misspelt' => 'misspelt-keyword',
    'template explain wrong-e' => 'wrong-escaping',
    'template tree --format js' => 'json',
    'template render pa' => '',
] as $words => $wanted) {
    $got = completed($words);
    echo $got === $wanted ? '' : "$words: $got\nexpected: $wanted\n";
}

foreach (['manpage' => 'docs/template.1', 'schema' => 'tool/template.schema.json'] as $script => $file) {
    if (shell_exec(phpCommand() . ' ' . escapeshellarg("$root/tool/$script.php")) !== file_get_contents("$root/$file")) {
        echo "$file is out of date: run scripts/manpage\n";
    }
}
if (trim((string) shell_exec('command -v groff')) !== '') {
    echo shell_exec('env -u LD_PRELOAD groff -man -Tutf8 -ww -z ' . escapeshellarg("$root/docs/template.1") . ' 2>&1');
}

// The documented signature is the real one.
function signature(string $function): array
{
    preg_match_all('/Parameter.*|- Return.*/', $function, $matches);
    return $matches[0];
}
$php = escapeshellarg(PHP_BINARY);
$show = "require '$root/editors/template.ide.php'; echo new ReflectionFunction('template');";
$documented = shell_exec("$php -n -r " . escapeshellarg($show));
if (signature($documented) !== signature((string) new ReflectionFunction('template')) || !signature($documented)) {
    echo "documented: $documented\n";
}

// Without what it needs, it says so in one line.
foreach (['' => 'the extension isn\'t loaded', 'template' => 'PHP\'s extension ctype is needed'] as $extension => $message) {
    preg_match('~-d "(extension=\S*template[^"/]*)"~', getenv('TEST_PHP_EXTRA_ARGS'), $match);
    $options = $extension === '' ? '' : '-d ' . escapeshellarg($match[1]);
    $begin = "require '$root/tool/autoload.php'; exit(TemplateTool\\Console\\Start::run(['template', 'list'], '/nowhere'));";
    $lines = [];
    exec("$php -n $options -r " . escapeshellarg($begin) . ' 2>&1', $lines, $status);
    if ($status !== 2 || count($lines) !== 1 || !str_starts_with($lines[0], "template: $message")) {
        echo "without its needs: $status ", implode("\n", $lines), "\n";
    }
}
echo "done\n";
?>
--EXPECT--
13 commands
done
