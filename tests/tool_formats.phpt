--TEST--
template check: the formats, exit statuses, switches, folders, progress on a terminal
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

$long = str_repeat('<b>x</b> ', 20);
put([
    'site/page.tpl' => "<p>\n\t日本 {a'b} {optional_c}\n$long{x::} $long\n{/optional}{include part.txt}",
    'site/part.txt' => "{/dynamic}\n{n\n\nn'm}\x1b[31m {*}",
    'site/clean.html' => 'x',
    'site/.hidden.tpl' => '{a::}',
    'site/sub/odd&"<name>.htm' => "{a::}\n{\xE9::}",
    'empty/style.css' => 'a{b',
]);
put(['site/binary.tpl' => "\0"]);

foreach (['text', 'json', 'checkstyle', 'github'] as $format) {
    [$status, $output, $error] = tool("check site/page.tpl site/sub site/clean.html --format $format --off missing-include");
    echo "== $format, status $status $error\n", $format === 'json' ? implode("\n", findings($output)) . "\n" : $output;
}
echo "== JSON, one finding\n", tool('check - -fjson', "é\n {x:::y} ")[1];

$error = static fn(string $start): Closure => static fn(string $got): bool => str_starts_with($got, $start);
$any = static fn(string $got): bool => $got !== '';
commands([
    ['check site/clean.html', 0, "No findings in 1 template.\n", ''],
    ['check site/clean.html -f json', 0, "[]\n", ''],
    ['check site/clean.html -f github', 0, '', ''],
    ['check -', 0, "No findings in 1 template.\n", '', '{a}'],
    ['check -', 2, $error('standard input: error: this can\'t be checked: not a text file: there is a NUL byte at offset 2'),
        '', "{a\0}"],
    ['check site --errors-only --name "c*" -f text', 0, "No findings in 1 template.\n", ''],
    ['check site --name "*.css"', 2, '', "template: site: no file here is named like *.css (--name)\n"],
    ['check site/sub -e -f github --name "*.htm"', 1, $any, ''],
    // What can be checked is checked.
    ['check site/binary.tpl none site/clean.html empty/style.css --off cut-off-tag', 2,
        "none: error: this can't be checked: no such file [unreadable-file]\n\nsite/binary.tpl: error: this can't be checked:"
            . " not a text file: there is a NUL byte at offset 0 [unreadable-file]\n\n2 errors and 0 warnings in 2 templates.\n", ''],
    ['check none -f github', 2, "::error file=none,line=1,endLine=1,col=1,endColumn=1,title=unreadable-file::"
        . "this can't be checked: no such file\n", ''],
    ['check empty', 2, '', $error('template: empty: no file here is named like *.tpl or *.html or *.htm')],
    ['check', 2, '', $error('template: check: give files or folders; without any, the project is checked')],
    ['check site -f xml', 2, '', "template: --format xml: choose one of text, json, checkstyle, github, sarif\n"],
    ['check site --off keyword-prefixes', 2, '',
        "template: --off keyword-prefixes: there is no such warning; is \"keyword-prefix\" meant?\n"],
    ['check site --data none.json', 2, '', "template: none.json: no such file\n"],
    ['explain none', 2, '', "template: explain none: there is no such warning; \"template explain\" lists them all\n"],
]);

// A file that is too large is named, and no time is spent on it.
$large = fopen('large.tpl', 'w');
ftruncate($large, 100000000);
commands([
    ['check large.tpl', 2, $error("large.tpl: error: this can't be checked: too large for a template: 100.0 MB; the limit is 8.0 MB"), ''],
    ['tree large.tpl', 2, '', "template: large.tpl: too large for a template: 100.0 MB; the limit is 8.0 MB\n"],
]);
unlink('large.tpl');

for ($i = 0; $i < 200; $i++) {
    put(["many/$i.tpl" => '{a}']);
}
$descriptors = [['file', '/dev/null', 'r'], ['file', 'output', 'w'], ['pty']];
$process = startTool('check many', $descriptors, $pipes);
$shown = '';
while (($part = @fread($pipes[2], 4096)) !== false && $part !== '') {
    $shown .= $part;
}
$status = proc_close($process);
echo $status, ' ', file_get_contents('output'), str_contains($shown, '200/200') ? "a progress bar\n" : "no bar: $shown\n";
echo tool('check many')[2] === '' ? "none into a file\n" : "a bar into a file\n";
?>
--EXPECT--
== text, status 1 
site/page.tpl:2:5: error: Variable block bad parameter 'a'b': ' is forbidden in variable
 2 |  日本 {a'b} {optional_c}
   |       ^~~~~

site/page.tpl:2:12: warning: "optional_c" begins with a keyword, so this is the tag "optional" with the argument "_c" [keyword-prefix]
 2 |  日本 {a'b} {optional_c}
   |              ^~~~~~~~~~

site/page.tpl:3:181: error: Bad formated parameter'x::': too many :
 3 | …> <b>x</b> <b>x</b> {x::} <b>x</b> <b>x</b> <b>x</b> <b>x</b> <b>x</b> <b>x</b> <b>x</b> <b>x</b> <…
   |                      ^~~~~

site/part.txt:1:1: error: Unexpected closing dynamic tag
 1 | {/dynamic}
   | ^~~~~~~~~~
   = included from site/page.tpl:4:12

site/part.txt:2:1: error: Variable block bad parameter 'n\n\nn'm': ' is forbidden in variable
 2 | {n
   | ^~
   = included from site/page.tpl:4:12

site/part.txt:4:12: warning: "*" stands outside of every loop, so it finds nothing [outside-loop]
 4 | n'm}�[31m {*}
   |            ^
   = included from site/page.tpl:4:12

site/sub/odd&"<name>.htm:1:1: error: Bad formated parameter'a::': too many :
 1 | {a::}
   | ^~~~~

site/sub/odd&"<name>.htm:2:1: error: Bad formated parameter'?::': too many :
 2 | {é::}
   | ^~~~~

6 errors and 2 warnings in 3 templates.
"template explain keyword-prefix" tells more about a warning, "--off keyword-prefix" leaves it out.
== json, status 1 
site/page.tpl:2:5-10 error Variable block bad parameter 'a'b': ' is forbidden in variable
site/page.tpl:2:12-22 keyword-prefix "optional_c" begins with a keyword, so this is the tag "optional" with the argument "_c"
site/page.tpl:3:181-186 error Bad formated parameter'x::': too many :
site/part.txt:1:1-11 error Unexpected closing dynamic tag (from site/page.tpl:4:12)
site/part.txt:2:1-4:5 error Variable block bad parameter 'n

n'm': ' is forbidden in variable (from site/page.tpl:4:12)
site/part.txt:4:12-13 outside-loop "*" stands outside of every loop, so it finds nothing (from site/page.tpl:4:12)
site/sub/odd&"<name>.htm:1:1-6 error Bad formated parameter'a::': too many :
site/sub/odd&"<name>.htm:2:1-6 error Bad formated parameter'�::': too many :
== checkstyle, status 1 
<?xml version="1.0" encoding="UTF-8"?>
<checkstyle version="4.3">
  <file name="site/page.tpl">
    <error line="2" column="5" severity="error" message="Variable block bad parameter &apos;a&apos;b&apos;: &apos; is forbidden in variable" source="template.engine"/>
    <error line="2" column="12" severity="warning" message="&quot;optional_c&quot; begins with a keyword, so this is the tag &quot;optional&quot; with the argument &quot;_c&quot;" source="template.keyword-prefix"/>
    <error line="3" column="181" severity="error" message="Bad formated parameter&apos;x::&apos;: too many :" source="template.engine"/>
  </file>
  <file name="site/part.txt">
    <error line="1" column="1" severity="error" message="Unexpected closing dynamic tag; included from site/page.tpl:4:12" source="template.engine"/>
    <error line="2" column="1" severity="error" message="Variable block bad parameter &apos;n\n\nn&apos;m&apos;: &apos; is forbidden in variable; included from site/page.tpl:4:12" source="template.engine"/>
    <error line="4" column="12" severity="warning" message="&quot;*&quot; stands outside of every loop, so it finds nothing; included from site/page.tpl:4:12" source="template.outside-loop"/>
  </file>
  <file name="site/sub/odd&amp;&quot;&lt;name&gt;.htm">
    <error line="1" column="1" severity="error" message="Bad formated parameter&apos;a::&apos;: too many :" source="template.engine"/>
    <error line="2" column="1" severity="error" message="Bad formated parameter&apos;?::&apos;: too many :" source="template.engine"/>
  </file>
</checkstyle>
== github, status 1 
::error file=site/page.tpl,line=2,endLine=2,col=5,endColumn=10,title=template error::Variable block bad parameter 'a'b': ' is forbidden in variable
::warning file=site/page.tpl,line=2,endLine=2,col=12,endColumn=22,title=keyword-prefix::"optional_c" begins with a keyword, so this is the tag "optional" with the argument "_c"
::error file=site/page.tpl,line=3,endLine=3,col=181,endColumn=186,title=template error::Bad formated parameter'x::': too many :
::error file=site/part.txt,line=1,endLine=1,col=1,endColumn=11,title=template error::Unexpected closing dynamic tag%0Aincluded from site/page.tpl:4:12
::error file=site/part.txt,line=2,endLine=4,col=1,endColumn=5,title=template error::Variable block bad parameter 'n%0A%0An'm': ' is forbidden in variable%0Aincluded from site/page.tpl:4:12
::warning file=site/part.txt,line=4,endLine=4,col=12,endColumn=13,title=outside-loop::"*" stands outside of every loop, so it finds nothing%0Aincluded from site/page.tpl:4:12
::error file=site/sub/odd&"<name>.htm,line=1,endLine=1,col=1,endColumn=6,title=template error::Bad formated parameter'a::': too many :
::error file=site/sub/odd&"<name>.htm,line=2,endLine=2,col=1,endColumn=6,title=template error::Bad formated parameter'?::': too many :
== JSON, one finding
[
    {
        "file": "standard input",
        "line": 2,
        "column": 2,
        "endLine": 2,
        "endColumn": 9,
        "offset": 4,
        "length": 7,
        "severity": "error",
        "name": null,
        "message": "Bad formated parameter'x:::y': too many :",
        "notes": [],
        "includedFrom": [],
        "edits": []
    }
]
16 commands
2 commands
0 No findings in 200 templates.
a progress bar
none into a file
