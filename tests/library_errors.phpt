--TEST--
Template\Engine: every refusal is an exception with the engine's message, the file, line and column, and the includes
--EXTENSIONS--
template
ctype
mbstring
--FILE--
<?php
require __DIR__ . '/library.inc';

put([
    'ok.tpl' => 'Hello {name}{include part.tpl}',
    'part.tpl' => '!',
    'far/part.tpl' => '(far)',
    'far/only.tpl' => '[{include part.tpl}]',
    'bad.tpl' => "first\n\r\n  é\t{include lines.tpl}",
    'lines.tpl' => "x\r\n é{a::}\n{b::}{/optional}",
    'deep.tpl' => "\n{include bad.tpl}{include lines.tpl}",
    'twice.tpl' => "{include part.tpl}{optional no}\n{include lines.tpl}{/optional}",
    'open.tpl' => "a\n{optional a}{optional b}{/optional}",
    'crossed.tpl' => "{optional a}\n{dynamic b}{/optional}{/dynamic}",
    'circle.tpl' => "\n {include back.tpl}",
    'back.tpl' => "{include circle.tpl}",
    'data.tpl' => "page\n{include file}",
    'folder.tpl' => "\n {include far}",
    'names.tpl' => "{dynamic n,a}\n{dynamic n,b}{/dynamic}{/dynamic}",
    '100%.tpl' => "\n{50%::}",
    'a in b.tpl' => "\n{c in d::}",
    'nul.tpl' => "\0\n{a::}",
]);
symlink('lines.tpl', 'link.tpl');
chdir('far');
$engine = new Template\Engine([folder(), folder() . '/far/']);

foreach ([
    ['ok.tpl', ['name' => 'Ann']], ['only.tpl'], ['far/only.tpl'], ['./part.tpl'],
    ['lines.tpl'], ['bad.tpl'], ['deep.tpl'], ['twice.tpl'], ['twice.tpl', ['no' => 1]], [folder() . '/bad.tpl'], ['../bad.tpl'],
    ['link.tpl'], ['open.tpl'], ['crossed.tpl'], ['circle.tpl'], ['names.tpl', ['a' => [], 'b' => []]],
    ['data.tpl'], ['data.tpl', ['file' => 'part.tpl']], ['data.tpl', ['file' => 'lines.tpl']], ['data.tpl', ['file' => 'data.tpl']],
    ['100%.tpl'], ['a in b.tpl'],
    // What can't be checked: the file alone. No file at all: the code that asked for it.
    ['nul.tpl'], ['none.tpl'], ['none in part.tpl'], [''], ['part.tpl/none'],
] as $row) {
    echo str_replace(folder(), '~', $row[0]), ': ', rendered($engine, ...$row), "\n";
}
echo "\n";
foreach (['{name}', "a\n {b::}", '{include bad.tpl}', "{optional in}\n in ", "\n{include only.tpl}{/dynamic}", "a\0{b::}"] as $text) {
    echo rendered($engine, $text, ['name' => 'Bob'], true), "\n";
}
echo "\n";

// What the checker has no memory for is told without its place, and doesn't end the request.
file_put_contents(folder() . '/large.tpl', str_repeat('{a} ', 300000) . '{b::}');
file_put_contents(folder() . '/parts.tpl', "{include half.tpl}\n{include rest.tpl}{b::}");
foreach (['half', 'rest'] as $name) {
    file_put_contents(folder() . "/$name.tpl", implode(' ', array_map(fn(int $i): string => '{' . $name . "$i}", range(1, 20000))));
}
$limit = ini_set('memory_limit', '32M');
echo rendered($engine, 'large.tpl'), "\n", rendered($engine, 'parts.tpl'), "\n", rendered($engine, 'lines.tpl'), "\n\n";
ini_set('memory_limit', $limit);

// A folder prints a notice of PHP's, which is the caller's matter.
[, $notices] = outcome(function () use ($engine): void {
    echo rendered($engine, 'folder.tpl'), "\n", rendered($engine, 'far'), "\n";
});
echo count($notices), " notices\n";

$error = null;
try {
    $engine->render('bad.tpl');
} catch (ErrorException $error) {
    echo get_class($error), ' ', $error->getSeverity() === E_WARNING, ' ', $error->template, ', ',
        str_replace(folder(), '', strtok($error->getTraceAsString(), "\n")), "\n";
}
foreach ([[], '', 'none', ['.', 'a:b']] as $folders) {
    is_dir('a:b') || mkdir('a:b');
    try {
        new Template\Engine($folders);
    } catch (InvalidArgumentException $fault) {
        echo str_replace(folder(), '', $fault->getMessage()), "\n";
    }
}
$engine = new Template\Engine(['.', './', '..', '/']);
echo str_replace(folder(), '~', implode(' ', $engine->folders)), "\n";
echo $engine->nameOf(folder() . '/far/only.tpl'), ' ', str_replace(folder(), '~', (new Template\Engine(['..', '.']))->nameOf(folder() . '/far/part.tpl')), "\n";
?>
--EXPECT--
ok.tpl: Hello Ann!
only.tpl: [!]
far/only.tpl: [!]
./part.tpl: (far)
lines.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3
bad.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < bad.tpl:3:5
deep.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < bad.tpl:3:5 < deep.tpl:2:1
twice.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < twice.tpl:2:1
twice.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < twice.tpl:2:1
~/bad.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < bad.tpl:3:5
../bad.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < bad.tpl:3:5
link.tpl: Bad formated parameter'a::': too many : in link.tpl | lines.tpl:2 | 2:3
open.tpl: Missing closing tag in open.tpl | open.tpl:2 | 2:1
crossed.tpl: Unexpected closing optional tag in crossed.tpl | crossed.tpl:2 | 2:12
circle.tpl: Include block bad parameter 'circle.tpl': circle is detected in back.tpl | back.tpl:1 | 1:1 < circle.tpl:2:2
names.tpl: Dynamic block bad parameter 'b': namespace is used already in names.tpl | names.tpl:2 | 2:1
data.tpl: page

data.tpl: page
!
data.tpl: Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < data.tpl:2:1
data.tpl: Include block bad parameter 'file': circle is detected in data.tpl | data.tpl:2 | 2:1
100%.tpl: Bad formated parameter'50%::': too many : in 100%.tpl | 100%.tpl:2 | 2:1
a in b.tpl: Bad formated parameter'd::': too many : in a in b.tpl | a in b.tpl:2 | 2:1
nul.tpl: Bad formated parameter'a::': too many : in nul.tpl | nul.tpl:0 | -
none.tpl: Could not open file none.tpl | caller | -
none in part.tpl: Could not open file none in part.tpl | caller | -
: Could not open file  | caller | -
part.tpl/none: Could not open file part.tpl/none | caller | -

Bob
Bad formated parameter'b::': too many : in a\n {b::} | caller | 2:2
Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3 < bad.tpl:3:5 < :1:1
Missing closing tag in {optional in}\n in  | caller | 1:1
Unexpected closing dynamic tag in \n{include only.tpl}{/dynamic} | caller | 2:19
a

Bad formated parameter'b::': too many : in large.tpl | large.tpl:0 | -
Bad formated parameter'b::': too many : in parts.tpl | parts.tpl:2 | 2:19
Bad formated parameter'a::': too many : in lines.tpl | lines.tpl:2 | 2:3

basic_string::append | folder.tpl:2 | 2:2
basic_string::append | caller | -
2 notices
Template\TemplateError 1 bad.tpl, #0 /bad.tpl(3): include()
A template engine needs at least one folder
There is no folder ""
There is no folder "none"
A folder for templates can't have ":" in its name: /far/a:b
~/far ~/far ~/far/.. /
only.tpl ~/far/part.tpl
