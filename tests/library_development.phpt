--TEST--
Template\Development: each finding once for each change of its file, as a notice or to a logger; nothing without it
--EXTENSIONS--
template
ctype
mbstring
--SKIPIF--
<?php stream_resolve_include_path('Psr/Log/autoload.php') || exit("skip needs Debian's php-psr-log"); ?>
--FILE--
<?php
require 'Psr/Log/autoload.php';
require __DIR__ . '/library.inc';
require __DIR__ . '/child.inc';

use Template\Development;
use Template\Engine;

final class Log extends Psr\Log\AbstractLogger
{
    public array $lines = [];

    public function log($level, $message, array $context = []): void
    {
        $this->lines[] = "$level $context[line]:$context[column] $context[finding] in " . basename($context['file']);
    }
}

/** Renders as requests do that follow each other, each with an engine of its own. */
function requests(string $what, string $name, ?Development ...$each): void
{
    foreach ($each ?: [null] as $development) {
        [$text, $notices] = outcome(fn() => (new Engine(folder(), $development))->render($name));
        echo "$what: ", trim(str_replace([folder() . '/', "\n"], ['', ' '], implode(' ', [$text, ...$notices]))), "\n";
    }
}

$memory = folder() . '/told';
$new = fn(mixed ...$options): Development => new Development(...$options, memory: $memory);
put(['page.tpl' => 'page {include part.tpl}{include lost.tpl}', 'part.tpl' => 'part', 'other.tpl' => 'other {include part.tpl}']);

requests('production', 'page.tpl');
echo 'classes of the checker: ', count(preg_grep('/^TemplateTool/', get_declared_classes())), "\n";
requests('first', 'page.tpl', $new());
requests('again', 'page.tpl', $new());
put(['part.tpl' => 'part {*::x}']);
requests('a change of the part', 'page.tpl', $new(), $new());
requests('the same from another page', 'other.tpl', $new());
put(['lost.tpl' => 'found {$x}']);
requests('a file that was missing', 'page.tpl', $new(), $new());
put(['page.tpl' => 'page, mended']);
requests('mended', 'page.tpl', $new());
put(['page.tpl' => 'page {$y} {if z}']);
requests('off', 'page.tpl', $new(off: ['foreign-tag']), $new(off: ['foreign-tag']), $new());
put(['page.tpl' => '<p>{a}</p>']);
requests('security', 'page.tpl', $new(security: true));
file_put_contents($memory, '{"pages": 1');
requests('a memory that is broken', 'other.tpl', $new());
requests('nowhere to remember', 'other.tpl', new Development(memory: '/none/told'), new Development(memory: '/none/told'));
put(['bad.tpl' => '{a::}']);
requests('an error in production', 'bad.tpl');
requests('an error', 'bad.tpl', $new());
put(['large.tpl' => '{optional none}' . str_repeat('{a}', 20000) . '{/optional}']);
$limit = ini_set('memory_limit', '32M');
requests('not memory enough', 'large.tpl', $new());
ini_set('memory_limit', $limit);

$log = new Log();
(new Engine(folder(), new Development($log, memory: "$memory.log")))->render('other.tpl');
echo implode("\n", $log->lines), "\n";

// By default a file in a folder that nobody else can read.
putenv('TMPDIR=' . folder());
echo str_contains(child('require "' . __DIR__ . '/library.inc"; (new Template\Engine("' . folder() . '", new Template\Development()))
    ->render("other.tpl"); (new Template\Engine("' . folder() . '", new Template\Development()))->render("other.tpl");'), '[') ? "told\n" : "silent\n";
foreach (glob(folder() . '/template-development-*/*') as $file) {
    printf("%s %o\n", basename($file), fileperms(dirname($file)) & 0777);
}
?>
--EXPECT--
production: page part
classes of the checker: 0
first: page part level 1024: page.tpl:1:33: warning: there is no file "lost.tpl" in the include path, so nothing is included [missing-include]
again: page part
a change of the part: page part {*::x} level 1024: part.tpl:1:7: warning: "*::x" stands outside of every loop, so it finds nothing [outside-loop]
a change of the part: page part {*::x}
the same from another page: other part {*::x}
a file that was missing: page part {*::x}found {$x} level 1024: lost.tpl:1:8: warning: names are written without "$": write "{x}" [dollar-variable]
a file that was missing: page part {*::x}found {$x}
mended: page, mended
off: page {$y} {if z} level 1024: page.tpl:1:7: warning: names are written without "$": write "{y}" [dollar-variable]
off: page {$y} {if z}
off: page {$y} {if z} level 1024: page.tpl:1:11: warning: "if" is no tag of this language: a section is "{optional name}...{/optional}" [foreign-tag]
security: <p>{a}</p> level 1024: page.tpl:1:4: warning: this value is printed into HTML (text) without escaping; "htmlspecialchars" would escape it [unescaped-value]
a memory that is broken: other part {*::x} level 1024: part.tpl:1:7: warning: "*::x" stands outside of every loop, so it finds nothing [outside-loop]
nowhere to remember: other part {*::x} level 1024: part.tpl:1:7: warning: "*::x" stands outside of every loop, so it finds nothing [outside-loop]
nowhere to remember: other part {*::x} level 1024: part.tpl:1:7: warning: "*::x" stands outside of every loop, so it finds nothing [outside-loop]
an error in production: Template\TemplateError: Bad formated parameter'a::': too many : in bad.tpl
an error: Template\TemplateError: Bad formated parameter'a::': too many : in bad.tpl
not memory enough: level 1024: large.tpl:1:1: error: this can't be checked: there may not be memory enough for it [unreadable-file]
notice 1:7 outside-loop in part.tpl
told
told.json 700
