--TEST--
template check: errors with their places, warnings, includes and the loops around them
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

// Each row is checked in a folder of its own: [files, findings]. A template alone is a.tpl. In the findings the message
// of an error is whole; a warning is named, and "~" stands in front of a part of its message.
$rows = [
    'clean' => ['{{b}} { d } {} {x \'\'}{optional a}{dynamic r,x}{r::*::y}{[*]}{/dynamic}{/optional}', []],
    'every error' => ["{a'b}\n é {a::} {x 'y}\n{*::*}\t{[*]::x}{y::x::ns::*}", [
        '1:1-6 error Variable block bad parameter \'a\'b\': \' is forbidden in variable',
        '2:4-9 error Bad formated parameter\'a::\': too many :',
        '2:10-16 error Variable block bad parameter \'x \'y\': could not find second \' as the last character',
        '3:1-7 error Bad formated parameter: too many *',
        '3:8-16 error Bad formated parameter: [*] must be last',
        '3:16-29 error Bad formated parameter\'y::x::ns::*\': too many namespaces',
    ]],
    'later alternatives' => ['{* b:::c}', ['1:1-10 error Bad formated parameter\'b:::c\': too many :']],
    'percent' => ['{a%%s::}', ['1:1-9 error Bad formated parameter\'a%s::\': too many :']],
    'tag errors' => ["{include *}\n{include}\n{dynamic r::[*]}{/dynamic}{dynamic}{/dynamic}\n{include .}", [
        '1:1-12 error Include block bad parameter \'*\': asterisk in filename is forbidden',
        '2:1-10 error Include block bad parameter: no parameter found',
        '3:1-17 error Dynamic block bad parameter \'r::[*]\': [*] is forbidden',
        '3:27-36 error Dynamic block bad parameter \'\': no parameter found',
        '4:1-12 error basic_string::append ("." is a folder: it can be opened as a file can, but there is no text to read in it)',
    ]],
    'overlap' => ["{optional a}{dynamic b}{/optional}{/dynamic}{/dynamic}", [
        '1:24-35 error Unexpected closing optional tag ({dynamic b} is still open, from line 1, column 13)',
        '1:45-55 error Unexpected closing dynamic tag',
    ]],
    'wrong direction' => ["{dynamic a}{/rdynamic}{rdynamic a}{/dynamic}{/rdynamic}", [
        '1:12-23 error Unexpected closing rdynamic tag ({dynamic a} is still open, from line 1, column 1)',
        '1:35-45 error Unexpected closing dynamic tag ({rdynamic a} is still open, from line 1, column 23)',
        '1:45-56 error Unexpected closing rdynamic tag',
    ]],
    'never closed' => ["{optional a}\n  {dynamic b}", [
        '1:1-13 error Missing closing tag',
        '2:3-14 error Missing closing tag',
    ]],
    'same name' => ['{dynamic r,a}{dynamic s,b}{dynamic r,c}{/dynamic}{/dynamic}{/dynamic}{dynamic r,d}{/dynamic}', [
        '1:27-40 error Dynamic block bad parameter \'c\': namespace is used already'
            . ' (the loop around it at line 1, column 1 bears the same name)',
    ]],
    'too deep' => [str_repeat('{optional a}', 100000) . str_repeat('{/optional}', 100000), [
        '1:1199989-1200001 error Blocks nested too deeply',
    ]],
    'brace in tag' => ["{optional a}{name\n{b}{*::c}{/optional}", [
        '1:1-13 error Missing closing tag',
        '1:13-2:1 brace-in-tag ~ (the "{" is at line 2, column 1)',
        '2:5-9 outside-loop ~ "*::c"',
    ]],
    'brace in opening tag' => ['{dynamic a {b}{/dynamic}', [
        '1:1-12 error Missing closing tag',
        '1:1-12 brace-in-tag ~ (the "{" is at line 1, column 12)',
    ]],
    'cut off' => ['{optional a}{b}{/optional', ['1:16-26 cut-off-tag ~']],
    'cut off opening' => ['{optional a', ['1:1-12 error Missing closing tag', '1:1-12 cut-off-tag ~']],
    'keyword prefix' => ['{dynamic::x}{/dynamic}{htmlspecialchars*}{include,}', [
        '1:1-13 error Bad formated parameter\'::x\': too many :',
        '1:2-12 keyword-prefix ~ "dynamic::x" begins with a keyword, so this is the tag "dynamic"',
        '1:40-41 outside-loop ~',
        '1:50-51 missing-include ~ ","',
    ]],
    'misspelt' => ['{Htmlentities a}{options \'x\'}{dynamc}{dynamc a}{/optinal}', [
        '1:2-14 misspelt-keyword ~ is "htmlentities" meant?',
        '1:39-45 misspelt-keyword ~ is "dynamic" meant?',
        '1:49-57 misspelt-keyword ~ is "/optional" meant?',
    ]],
    'blanks' => ["{dynamic r ,x}{/dynamic}{dynamic r,\tx}{/dynamic}{optional a   b}{/optional}{optional\ta\nb}{/optional}", [
        '1:11-12 blank-at-comma ~ belongs to the name: "r::*"',
        '1:36-37 blank-at-comma ~ belongs to the reference',
        '1:61-63 blank-in-comparison ~ only one blank',
        '1:87-2:1 blank-in-comparison ~ a tab or a line break',
    ]],
    'integers' => ['{0}{1::a \'x\'}{a -5::b}{007}{a::0}{dynamic a}{*::0}{/dynamic}{optional 3}{/optional}', [
        '1:2-3 integer-index ~', '1:5-9 integer-index ~', '1:17-22 integer-index ~', '1:71-72 integer-index ~',
    ]],
    'keys' => ["{dynamic r,a}{optional r::[*] 'x'}{/optional}{optional r::* 'x'}{/optional}{/dynamic}", [
        '1:31-34 quoted-key ~',
    ]],
    'loops' => ["{*}{[*]}{r::*}{dynamic r,a}{*}{r::[*]}{s::*}\n{s::*::b s::[*]}{/dynamic}", [
        '1:2-3 outside-loop ~ "*" stands outside of every loop, so it finds nothing (so does one more reference, in line 1',
        '1:10-14 unknown-loop ~ "r"',
        '1:40-44 unknown-loop ~ "s" (so do 2 more references, in line 2; if this template is included inside such a loop',
    ]],
    'own reference' => ['{dynamic r,r::*}{/dynamic}', ['1:12-16 unknown-loop ~']],
    'wide characters' => ["日本語 {a::}", ['1:5-10 error Bad formated parameter\'a::\': too many :']],
    'no UTF-8' => ["\xE9\xE8 {a::}", ['1:4-9 error Bad formated parameter\'a::\': too many :']],

    // A part is checked from where it is included, once for each set of loops; places differ in their loops alone.
    'part in loop' => [['a.tpl' => '{dynamic r,x}{include b.part}{/dynamic}', 'b.part' => '{r::*}{*}'], []],
    'part in loop and out' => [
        ['a.tpl' => "{dynamic r,x}{include b.tpl}{/dynamic}\n{include b.tpl}", 'b.tpl' => 'x{r::*}'],
        ['b.tpl:1:3-7 unknown-loop ~ (from a.tpl:2:1)'],
    ],
    'chain' => [
        ['a.tpl' => '{include b.part}', 'b.part' => "\n {include c.part}", 'c.part' => '{a::}{optional a}'],
        [
            'c.part:1:1-6 error Bad formated parameter\'a::\': too many : (from b.part:2:2; from a.tpl:1:1)',
            'c.part:1:6-18 error Missing closing tag (from b.part:2:2; from a.tpl:1:1)',
        ],
    ],
    'same name through include' => [
        ['a.tpl' => '{dynamic r,x}{include b.tpl}{/dynamic}', 'b.tpl' => '{dynamic r,y}{/dynamic}'],
        [],
    ],
    'circle' => [
        ['a.tpl' => '{include b.tpl}', 'b.tpl' => ' {include a.tpl}{include ./b.tpl}'],
        [
            'b.tpl:1:2-17 error Include block bad parameter \'a.tpl\': circle is detected (from a.tpl:1:1)',
            'b.tpl:1:26-33 missing-include ~ beside this template',
        ],
    ],
    'missing include' => ['{include gone.tpl}{include page::part}{include data:text/plain,x}{include php://stdin}', [
        '1:10-18 missing-include ~ there is no file "gone.tpl"',
    ]],
];

/** Whether a finding is as the row says. */
function fits(string $finding, string $wanted): bool
{
    [$exact, $part] = explode('~', $wanted, 2) + [1 => null];
    if ($part === null) {
        return $finding === $wanted;
    }
    $rest = substr($finding, strlen($exact));
    return str_starts_with($finding, $exact) && ($part === '' || str_contains($rest, trim($part)));
}

$files = [];
foreach ($rows as $name => [$templates]) {
    foreach (is_array($templates) ? $templates : ['a.tpl' => $templates] as $file => $template) {
        $files["$name/$file"] = $template;
    }
}
put($files);
[$status, $json, $error] = tool('check . --format=json');
if ($status !== 1 || $error !== '') {
    echo "status $status, error: $error\n";
}
$byFolder = array_fill_keys(array_keys($rows), []);
foreach (findings($json) as $finding) {
    [$folder, $rest] = explode('/', $finding, 2);
    // Folders in notes aren't of interest.
    $byFolder[$folder][] = preg_replace('~^a\.tpl:~', '', str_replace("from $folder/", 'from ', $rest));
}
foreach ($rows as $name => [, $expected]) {
    $got = $byFolder[$name];
    if (count($got) !== count($expected) || array_filter(array_map(fits(...), $got, $expected), fn($fits) => !$fits)) {
        echo "row \"$name\":\n  ", implode("\n  ", $got ?: ['nothing']), "\nexpected:\n  ", implode("\n  ", $expected), "\n";
    }
}
echo count($rows), " rows\n";
?>
--EXPECT--
29 rows
