--TEST--
template needs: what a page wants from its data; data that fits the schema makes the page without a missing value
--EXTENSIONS--
template
ctype
mbstring
intl
--SKIPIF--
<?php
require __DIR__ . '/tool.inc';
skipWithoutConsole();
foreach (['JsonSchema', 'PHPStan/PhpDocParser'] as $library) {
    is_file("/usr/share/php/$library/autoload.php") || exit("skip $library is missing");
}
?>
--FILE--
<?php
require __DIR__ . '/tool.inc';
require __DIR__ . '/manual.inc';
require toolRoot() . '/tool/autoload.php';
require '/usr/share/php/JsonSchema/autoload.php';
require '/usr/share/php/PHPStan/PhpDocParser/autoload.php';

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Json\Schema;
use TemplateTool\Json\SchemaSample;
use TemplateTool\Needs\Collector;
use TemplateTool\Needs\JsonSchema as NeedsSchema;
use TemplateTool\Needs\PhpDoc;
use TemplateTool\Needs\Sample;

/** Whether data fits, in the eyes of the tool and of another validator, which must agree. */
function fits(array $schema, array $data): bool
{
    $validator = new \JsonSchema\Validator();
    $text = json_encode($data ?: new stdClass());
    $decoded = json_decode($text);
    $validator->validate($decoded, json_decode(json_encode($schema)));
    $problem = (new Schema(json_decode(json_encode($schema), true)))->problem($data);
    // An empty array may be both a list and an object.
    if ($validator->isValid() !== ($problem === null) && !str_contains($text, '[]')) {
        echo json_encode([$schema, $data, $problem, $validator->getErrors()]), "\n";
    }
    return $problem === null;
}

/** What the checker says of the page with this data. */
function said(array $data): array
{
    $findings = (new Checker(new Options([''], data: $data)))->checkFiles(['page.tpl']);
    $names = ['missing-value', 'missing-include', 'loop-over-no-array', 'array-as-text', 'unprinted-value', null];
    $findings = array_filter($findings, fn($finding) => in_array($finding->name, $names, true));
    return array_map(fn($finding) => "$finding->name at $finding->offset", $findings);
}

/** All that the page needs; what is wrong with that is printed. */
function schemaOf(string $page): array
{
    $top = (new Collector(new Files([''])))->collect('page.tpl');
    $schema = NeedsSchema::make($top, 'page.tpl');
    $sample = Sample::make($top);
    $made = new SchemaSample(json_decode(json_encode($schema), true));
    foreach (['sample' => $sample, 'full' => $made->full(), 'least' => $made->least()] as $what => $data) {
        [$text, $warnings] = outcome(fn() => template('page.tpl', (array) $data));
        $said = [...said((array) $data), ...$warnings];
        if (!fits($schema, (array) $data) || $said) {
            echo "$what for $page: ", json_encode($data), ' ', implode(', ', $said), "\n";
        }
    }
    phpDoc(PhpDoc::make($top, 'page.tpl'));
    return [$schema, $sample];
}

/** A PHPDoc comment has to be one. */
function phpDoc(string $text): void
{
    // Its second version, which Debian 13 has, wants to be configured.
    $config = class_exists(\PHPStan\PhpDocParser\ParserConfig::class) ? [new \PHPStan\PhpDocParser\ParserConfig([])] : [];
    $constants = new \PHPStan\PhpDocParser\Parser\ConstExprParser(...$config);
    $types = new \PHPStan\PhpDocParser\Parser\TypeParser(...$config, ...[$constants]);
    $tokens = new \PHPStan\PhpDocParser\Parser\TokenIterator((new \PHPStan\PhpDocParser\Lexer\Lexer(...$config))->tokenize($text));
    $node = (new \PHPStan\PhpDocParser\Parser\PhpDocParser(...$config, ...[$types, $constants]))->parse($tokens);
    $parameters = $node->getParamTagValues();
    if (count($parameters) !== 1 || $parameters[0]->parameterName !== '$data') {
        echo "no PHPDoc: $text\n";
    }
}

/** The array shape in one line. */
function shape(string $phpDoc): string
{
    preg_match('/@param (.*) \$data/s', $phpDoc, $match);
    return strtr(preg_replace('/\s*\n \*\s+/', ' ', $match[1]), [
        'array{ ' => '{', ', ... }' => '}', ', ...}' => '}', 'scalar|null' => '…',
    ]);
}

// [template, paths as text, array shape]; "…" is "scalar|null".
put(['part.tpl' => '{row::*::name}{title}', 'box.tpl' => '{boxed}']);
$rows = [
    ['{a}', 'a text', '{a: …}'],
    ['{htmlspecialchars a}{b::c-d}', 'a string; b map; b::c-d text', '{a: string, b: {c-d: …}}'],
    ["{a 'none'}", 'a text optional', '{a?: …}'],
    ['{b c}', 'b text optional, needed unless there is c; c text optional, needed unless there is b', '{b?: …, c?: …}'],
    ['{b c}{c}', 'b text optional; c text', '{b?: …, c: …}'],
    ['{optional a}{/optional}', 'a flag optional', '{a?: mixed}'],
    ['{optional a}{htmlspecialchars a}{/optional}', 'a string optional, shown when true', '{a?: string|false|null}'],
    ['{optional a}{a}{/optional}{a}', 'a text shown when true', '{a: …}'],
    ['{optional a red}{/optional}{!optional a \'blue\'}{/optional}', 'a text optional, compared with "red", "blue"', '{a?: string|int}'],
    ['{!optional a}{b}{/optional}', 'a flag optional; b text optional, needed without a', '{a?: mixed, b?: …}'],
    ['{optional a x}{optional b}{c}{/optional}{/optional}', 'a text optional, compared with "x"; b flag optional;'
        . ' c text optional, needed with a "x" and with b', '{a?: string|int, b?: mixed, c?: …}'],
    ['{optional u}{u::n}{/optional}', 'u map optional, shown when true; u::n text', '{u?: {n: …}|false|null}'],
    ['{optional u::n}{u::n}{/optional}', 'u map optional; u::n text optional, shown when true', '{u?: {n?: …}}'],
    ['{dynamic a}{*}{/dynamic}', 'a list; a::* text', '{a: list<…>}'],
    ['{rdynamic r,a}{dynamic c,r::*::b}{htmlspecialchars c::*::x}{r::*::y}{/dynamic}{/rdynamic}',
        'a list; a::* map; a::*::b list; a::*::b::* map; a::*::b::*::x text; a::*::y text',
        '{a: list<{b: list<{x: …}>, y: …}>}'],
    ['{dynamic a}{[*]}{/dynamic}', 'a list or map', '{a: array<mixed>}'],
    ['{dynamic a}{optional [*] first}{*::x}{/optional}{/dynamic}', 'a map with the keys "first"; a::* map; a::*::x text optional',
        '{a: array<string, {x?: …}>}'],
    ['{dynamic a}{a::total}{*::x}{/dynamic}', 'a map; a::total text; a::num list; a::num::* map; a::num::*::x text',
        '{a: {total: …, num: list<{x: …}>}}'],
    ['{a::1::x}{dynamic a}{*::y}{/dynamic}', 'a list; a::1 map; a::1::x text; a::* map; a::*::y text', '{a: non-empty-list<{y: …}>}'],
    ['{dynamic row,rows}{include part.tpl}{/dynamic}', 'rows list; rows::* map; rows::*::name text; title text',
        '{rows: list<{name: …}>, title: …}'],
    ['{include page::box}{include box.tpl}', 'page map; page::box file name; boxed text', '{page: {box: string}, boxed: …}'],
    ['{*}{x::*}{0}{[*]}{include none.tpl}{{a}}', '', 'array<mixed>'],
];
foreach ($rows as [$template, $lines, $shape]) {
    put(['page.tpl' => $template]);
    $phpDoc = tool('needs page.tpl --phpdoc')[1];
    $got = explode("\n", trim(preg_replace(['/\([a-z.:0-9, …]+\)$/m', '/ +/', '/ $/m'], ['', ' ', ''], tool('needs page.tpl')[1])));
    if (implode('; ', $got) !== $lines || shape($phpDoc) !== $shape) {
        echo "$template\n  ", implode('; ', $got), "\n  ", shape($phpDoc), "\n";
    }
    phpDoc($phpDoc);
}
echo count($rows), " rows\n";

/** A part of a page in which references are what their names say: lists are loops', maps have keys, and so on. */
function part(int $depth, array $loops): string
{
    $row = $loops ? $loops[mt_rand(0, count($loops) - 1)] . '::*' : 'none';
    $texts = ['t', 'u', 'm::t', 'm::n::u', 'w::0', ...($loops ? ["$row::t", "$row::u", "$row::m::v", "$row::t"] : [])];
    $strings = ['s', 'm::s', ...($loops ? ["$row::t"] : [])];
    $lists = ['l', 'm::l', ...($loops ? ["$row::l", "$row::l"] : [])];
    $asked = [...$texts, ...$strings, ...$lists, 'f', 'm', 'm::f', 'm::n', ...($loops ? ["$row::f", "$row::m"] : [])];
    $one = static fn(array $of): string => $of[mt_rand(0, count($of) - 1)];
    $inside = static fn(): string => $depth > 0 ? part($depth - 1, $loops) . part($depth - 1, $loops) : '-';
    $name = chr(ord('a') + count($loops));
    return match (mt_rand(0, $depth > 0 ? 11 : 3)) {
        0 => '{' . $one($texts) . '}',
        1 => '{htmlspecialchars ' . $one($strings) . '}',
        2 => '{' . $one($texts) . ' ' . $one($texts) . '}',
        3 => '{' . $one($texts) . " 'none'}",
        4, 5 => '{optional ' . $one($asked) . '}' . $inside() . '{/optional}',
        6 => '{!optional ' . $one($asked) . '}' . $inside() . '{/optional}',
        7 => '{optional c ' . $one(['red', '7']) . '}' . $inside() . '{/optional}',
        8 => '{include part.tpl}',
        default => "{dynamic $name," . $one($lists) . '}' . part($depth - 1, [...$loops, $name]) . '{/dynamic}',
    };
}

/** All paths to values in data. */
function paths(array $data): array
{
    $paths = [];
    foreach ($data as $key => $value) {
        $paths[] = [$key];
        foreach (is_array($value) ? paths($value) : [] as $path) {
            $paths[] = [$key, ...$path];
        }
    }
    return $paths;
}

/** The data without this value, or with another in its place. */
function changed(array $data, array $path, mixed ...$value): array
{
    $key = array_shift($path);
    if ($path) {
        $data[$key] = changed($data[$key], $path, ...$value);
    } elseif ($value) {
        [$data[$key]] = $value;
    } else {
        unset($data[$key]);
        $data = is_int($key) ? array_values($data) : $data;
    }
    return $data;
}

put(['part.tpl' => '{u}{p}']);
mt_srand(7);
$good = $refused = 0;
for ($i = 0; $i < (watcher() ? 20 : 150); $i++) {
    $page = part(3, []) . part(3, []);
    put(['page.tpl' => $page]);
    [$schema, $sample] = schemaOf($page);
    // Whatever the schema lets through makes the page.
    $paths = paths($sample);
    for ($k = 0; $k < 12 && $paths; $k++) {
        $data = $sample;
        for ($n = mt_rand(1, 3); $n > 0 && ($paths = paths($data)); $n--) {
            $path = $paths[mt_rand(0, count($paths) - 1)];
            $data = mt_rand(0, 2) ? changed($data, $path) : changed($data, $path, [false, '', 'x', 5, ['x']][mt_rand(0, 4)]);
        }
        if (!fits($schema, $data)) {
            $refused++;
        } elseif ($said = said($data)) {
            echo "$page with ", json_encode($data), ': ', implode(', ', $said), "\n";
        } else {
            $good++;
        }
    }
}
echo $good > $i && $refused > $i ? "what fits is enough\n" : "$good and $refused\n";

// What real pages are given fits: the manual's examples with which nothing is amiss, and the shop.
$examples = 0;
$folder = getcwd();
foreach (glob(toolRoot() . '/docs/*.md') as $page) {
    foreach ((new Manual(file_get_contents($page)))->examples as $example) {
        if (!in_array($example->kind, ['template', 'row'], true) || $example->text === null || $example->warnings) {
            continue;
        }
        put($example->files);
        try {
            $data = json_decode(json_encode(eval($example->data)), true);
        } catch (Throwable) {
            continue;
        }
        is_file($example->source) && copy($example->source, 'page.tpl');
        if ($data === null || (new Checker(new Options([''], data: $data)))->checkFiles(['page.tpl'])) {
            continue;
        }
        $examples++;
        if (!fits(NeedsSchema::make((new Collector(new Files([''])))->collect('page.tpl'), ''), $data)) {
            echo basename($page), ":$example->line: ", file_get_contents('page.tpl'), "\n";
        }
    }
}
echo $examples > 60 ? "the manual's examples fit\n" : "$examples examples\n";

// The manual's page for teams shows what its commands print.
$text = file_get_contents(toolRoot() . '/docs/teams.md');
$examples = (new Manual($text))->examples;
put(end($examples)->files);
preg_match_all('/```sh\ntemplate ([^\n]+)\n```\n\n```text\n(.*?)```/s', $text, $shown, PREG_SET_ORDER);
foreach ($shown as [, $arguments, $output]) {
    $got = tool($arguments)[1];
    echo $got === $output ? '' : "$arguments: $got";
}
tool('needs pages/list.tpl --schema > list.schema.json');
echo count($shown), ' ', tool('check pages/list.tpl --schema list.schema.json --data sample.json')[1];

$shop = toolRoot() . '/examples/shop';
$schema = NeedsSchema::make((new Collector(new Files(["$shop/templates"])))->collect("$shop/templates/category.tpl"), 'category.tpl');
echo fits($schema, json_decode(file_get_contents("$shop/sample.json"), true)) ? "so does the shop's data\n" : "the shop's data doesn't\n";
echo tool('check -p ' . escapeshellarg("$shop/template.json"))[1];
?>
--EXPECT--
22 rows
what fits is enough
the manual's examples fit
3 No findings in 1 template.
so does the shop's data
No findings in 1 template.
