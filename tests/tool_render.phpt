--TEST--
template render: data from all sides, include path, errors with their place, statistics, bad input
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

put([
    'page.tpl' => "Hello {user::name}!{include part.tpl}\n",
    'pages/deep.tpl' => '{include part.tpl}{include other/part.tpl}',
    'pages/part.tpl' => '(beside)',
    'pages/other/part.tpl' => '(below)',
    'other/part.tpl' => '(other)',
    'part.tpl' => '({count \'none\'})',
    'bad.tpl' => "first\n  {include broken.tpl}",
    'broken.tpl' => "x\n é{a::}{/optional}",
    'open.tpl' => '{optional a}',
    'data.json' => '{"user": {"name": "Ann", "city": "Ulm"}, "count": 1}',
    'data.php' => '<?php echo "noise"; return ["user" => ["name" => "Bob"]];',
    'throws.php' => '<?php throw new LogicException("no data");',
    'ends.php' => '<?php exit;',
    'number.php' => '<?php return 3;',
]);
file_put_contents('binary.tpl', "\x89PNG\r\n\0{a::}\0");
file_put_contents('no-utf8.json', "{\"a\": \"\xE9\"}");
symlink('page.tpl', 'link.tpl');
$error = static fn(string $text): Closure => static fn(string $got): bool => str_starts_with($got, $text);

commands([
    ['render page.tpl', 0, "Hello {user::name}!(none)\n", ''],
    ['render page.tpl data.json', 0, "Hello Ann!(1)\n", ''],
    ['render page.tpl -', 0, "Hello Ann!(1)\n", '', file_get_contents('data.json')],
    ['render link.tpl --data-php=data.php', 0, "Hello Bob!(none)\n", ''],
    ['render page.tpl data.json --data-php=data.php -s user::name=Cid', 0, "Hello Cid!(1)\n", ''],
    ['render --string "{user::city} {user::name} {a::0::b}{optional n 3}!{/optional}" data.json -s a::0::b=c=:=d -s n:=3', 0,
        'Ulm Ann c=:=d!', ''],
    ['render --string "{dynamic l}{*}{/dynamic}{htmlspecialchars n}{t}" -s "l:=[1,2]" -s "l::x=<" -s n=7 -s t:=true', 0,
        '12<71', ''],
    ['render pages/deep.tpl', 0, '(beside)(below)', ''],
    ['render pages/deep.tpl -I .', 0, '(none)(other)', ''],
    ['render pages/deep.tpl -I pages --include-path=.', 0, '(beside)(below)', ''],
    ['render --string "{include part.tpl}"', 0, '(none)', ''],
    ['render page.tpl -o out.html', 0, '', ''],
    ['render page.tpl -o out.html --stats', 0, '', static fn(string $got): bool => preg_match(
        '/\Atime    \d+\.\d{3} ms\nmemory  \d+\.\d kB\npage    0\.0 kB\nread    0\.1 kB in 2 files\n\z/', $got) === 1],
    ['render binary.tpl', 1, '', "binary.tpl: error: Bad formated parameter'a::': too many : in binary.tpl\n"],

    // Nothing is written after an error.
    ['render bad.tpl -o out.html', 1, '', "broken.tpl:2:3: error: Bad formated parameter'a::': too many :\n"
        . " 2 |  é{a::}{/optional}\n   |   ^~~~~\n   = included from bad.tpl:2:3\n"],
    ['render open.tpl', 1, '', "open.tpl:1:1: error: Missing closing tag\n 1 | {optional a}\n   | ^~~~~~~~~~~~\n"],
    ['render --string "{a} {a} {b}" -s "a:=[]"', 0, 'Array Array {b}', "template:1:2: warning: this is an array, and prints"
        . " the word \"Array\" [array-as-text]\n 1 | {a} {a} {b}\n   |  ^\ntemplate:1:6: warning: this is an array, and"
        . " prints the word \"Array\" [array-as-text]\n 1 | {a} {a} {b}\n   |      ^\n"],

    // Bad input: one line, status 2.
    ['render', 2, '', "template: render: give a page or --string\n"],
    ['render page.tpl data.json x', 2, '', $error('template: Too many arguments')],
    ['render page.tpl data.json --string x', 2, '', "template: render: give a page or --string, not both\n"],
    ['render none.tpl', 2, '', "template: none.tpl: no such file\n"],
    ['render pages', 2, '', "template: pages: this is a folder\n"],
    ['render page.tpl none.json', 2, '', "template: none.json: no such file\n"],
    ['render page.tpl pages', 2, '', "template: pages: this is a folder\n"],
    ['render page.tpl no-utf8.json', 2, '', "template: no-utf8.json:1:8: broken JSON: this is not UTF-8\n"],
    ['render page.tpl --data-php=none.php', 2, '', "template: none.php: no such file\n"],
    ['render page.tpl --data-php=throws.php', 2, '', "template: throws.php: LogicException in throws.php:1: no data\n"],
    ['render page.tpl --data-php=ends.php', 2, '', "template: the data file ended the program\n"],
    ['render page.tpl --data-php=number.php', 2, '',
        "template: number.php: the data must be an object or an array, not int\n"],
    ['render page.tpl -s name', 2, '', "template: --set name: write path::to::key=value\n"],
    ['render page.tpl -s "a:=[1"', 2, '', "template: --set a:1:3: broken JSON: the text ends too early\n"],
    ['render page.tpl -I none', 2, '', "template: --include-path none: no such folder\n"],
    ['render page.tpl -o pages/none/x', 2, '', "template: pages/none/x: writing failed\n"],
    ['render page.tpl > /dev/full', 2, '', "template: standard output: writing failed\n"],
    ['render page.tpl - --watch', 2, '', $error('template: render --watch: the data can\'t come from the standard input')],
    ['render --none', 2, '', "template: The \"--none\" option does not exist.\n"],
    ['rendre', 2, '', "template: Command \"rendre\" is not defined. Did you mean this? render\n"],
]);
echo file_get_contents('out.html');

// Where JSON is broken: [text, place, what is there].
$broken = [
    ['', '1:1', 'the text ends too early'], ['nope', '1:1', 'unexpected nope'], ['{"a":1,}', '1:8', 'unexpected }'],
    ["{\n \"a\": é}", '2:7', 'unexpected é}'], ['[1,2', '1:5', 'the text ends too early'], ['[1 2]', '1:4', 'unexpected 2]'],
    ['{"a" 1}', '1:6', 'unexpected 1}'], ['{"a":1 "b":2}', '1:8', 'unexpected "b":2}'], ['{a:1}', '1:2', 'unexpected a:1}'],
    ['[01]', '1:2', 'unexpected 01]'], ['["a', '1:2', 'unexpected "a'], ["[\"a\nb\"]", '1:2', 'unexpected "a'],
    ['["\x"]', '1:2', 'unexpected "\x"]'], ['[[1], {"a": {"b": [true}}]', '1:24', 'unexpected }}]'], ['[] x', '1:4', 'unexpected x'],
    ['[1]]', '1:4', 'unexpected ]'], ['{"a":1]', '1:7', 'unexpected ]'], ['[.5]', '1:2', 'unexpected .5]'],
];
foreach ($broken as [$json, $place, $what]) {
    [$status, , $message] = tool('render page.tpl -', $json);
    if ($status !== 2 || $message !== "template: standard input:$place: broken JSON: $what\n") {
        echo "$json: status $status, $message";
    }
}
echo count($broken), " broken texts\n";

// What can be read only once does in place of a file, in every command.
exec('mkfifo one two');
$pipes = static fn(string $one, string $two = ''): Closure => static function () use ($one, $two): void {
    foreach (['one' => $one, 'two' => $two] as $pipe => $text) {
        $write = 'printf %s ' . escapeshellarg($text) . " >$pipe";
        $text === '' || exec('timeout 60 sh -c ' . escapeshellarg($write) . ' >/dev/null 2>&1 &');
    }
};
$has = static fn(string ...$parts): Closure => static fn(string $got): bool =>
    array_filter($parts, static fn(string $part): bool => !str_contains($got, $part)) === [];
foreach ([
    ['render one two', 0, '[x]', '', $pipes('[{a}]', '{"a":"x"}')],
    ['render page.tpl --data-php one', 0, $has('x'), '', $pipes('<?php return ["a" => "x"];')],
    ['render one --data-php -', 2, '', $has('template: standard input: ParseError in line 1: '), $pipes('{a}'), '<?php return ['],
    ['render - -s a=x', 0, '[x]', '', null, '[{a}]'],
    ['render one -w', 2, '', "template: render --watch: one is read once, and never changes\n", null],
    ['tree one two', 0, $has("one\n", 'path a: prints "x"'), '', $pipes('{a}', '{"a":"x"}')],
    ['tree - -f json', 0, $has('"file": "standard input"'), '', null, '{a}'],
    ['check one two page.tpl', 1, $has('one:1:1: error', 'two:1:2: error', ' in 3 templates'), '', $pipes('{a::}', ' {b::}')],
    ['check one -d -', 1, $has('[missing-value]'), '', $pipes('{b}'), '{"a": 1}'],
    ['check page.tpl --data two', 0, $has('No findings'), '', $pipes('', '{"a": 1}')],
    ['check /dev/zero .', 2, $has('/dev/zero: error: this can\'t be checked: not a plain file'), ''],
    ['render /dev/zero', 2, '', "template: /dev/zero: not a plain file\n"],
] as $row) {
    put(['page.tpl' => '{a}']);
    isset($row[4]) && $row[4]();
    ob_start();
    commands([[$row[0], $row[1], $row[2], $row[3], $row[5] ?? '']]);
    echo preg_replace('/^1 commands\n/m', '', ob_get_clean());
}
?>
--EXPECT--
37 commands
Hello {user::name}!(none)
18 broken texts
