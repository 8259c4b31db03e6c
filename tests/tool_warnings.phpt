--TEST--
template explain: each example gives the warning that it is for; warnings about security and with sample data
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
require toolRoot() . '/tool/autoload.php';

/** The names of the warnings in each file of a folder. */
function warnings(string $folder, string $options): array
{
    $names = [];
    foreach (json_decode(tool("check $folder $options --format json")[1], true) as $finding) {
        $names[basename($finding['file'])][] = $finding['name'] ?? $finding['message'];
    }
    return $names;
}

function compare(string $what, mixed $got, mixed $wanted): void
{
    if ($got !== $wanted) {
        echo "$what: ", json_encode($got), "\nexpected: ", json_encode($wanted), "\n";
    }
}

[, $list] = tool('explain');
$checked = 0;
$examples = [];
$all = TemplateTool\Rules\Catalogue::all();
foreach ($all as $name => $warning) {
    $options = $warning->isSecurity ? '--security' : '';
    if ($warning->data !== null) {
        put(["data-$name.json" => json_encode($warning->data)]);
        $options = "--data data-$name.json";
    }
    $folder = 'f' . md5($options);
    put(["$folder/$name.bad.tpl" => $warning->bad, "$folder/$name.good.tpl" => $warning->good]);
    $examples[$folder] = $options;
    $expected[$folder]["$name.bad.tpl"] = [$name];
    [$status, $text] = tool("explain $name");
    $isWhole = $status === 0 && str_contains($text, $warning->why) && str_contains($text, "\n    $warning->bad\n")
        && str_contains($text, "\n    $warning->good\n") && str_contains($list, "  $warning->summary\n");
    compare("explain $name", $isWhole, true);
    $checked++;
}
foreach ($examples as $folder => $options) {
    // Some are about what leads to an error; the warning says why.
    $got = array_map(fn($names) => array_values(array_intersect($names, array_keys($all))), warnings($folder, $options));
    ksort($expected[$folder]);
    compare("examples with \"$options\"", $got, $expected[$folder]);
}
echo $checked > 20 ? "examples checked\n" : "only $checked examples\n";

// What is at a place of HTML decides: [template, warnings of --security].
$places = [
    ['<p>{a}{htmlspecialchars a}{htmlentities a}{rawurlencode a}{\'x\'}{addslashes a}', 'unescaped-value wrong-escaping'],
    ['<a b="{htmlspecialchars a}{a}" c=\'{htmlentities a}{rawurlencode a}\' d={htmlspecialchars a}{rawurlencode a} e="{htmlspecialchars a}">',
        'unescaped-value single-quoted-attribute unquoted-attribute'],
    ['<a b = \'x>"{htmlspecialchars a}\' c="it\'s {htmlspecialchars a}">{htmlspecialchars a}', 'single-quoted-attribute'],
    ['<script>if (1<2) f("{addslashes a}", {htmlspecialchars a}, {a})</script>{htmlspecialchars a}',
        'wrong-escaping wrong-escaping unescaped-value'],
    ['<style>p::before {{ content: \'{htmlspecialchars a}\' }} </style><!-- <a b=\'{htmlspecialchars a} -->{addslashes a}',
        'wrong-escaping wrong-escaping'],
    ['<a{optional x} b{/optional}>{htmlspecialchars a}</a>{include x::y}{include part}',
        'include-from-data missing-include include-from-data'],
];
foreach ($places as $i => [$template]) {
    put(["places/$i.tpl" => $template]);
}
$got = warnings('places', '--security --off missing-include') + array_fill(0, count($places), []);
foreach ($places as $i => [$template, $wanted]) {
    $wanted = str_replace('missing-include ', '', $wanted);
    compare($template, implode(' ', $got["$i.tpl"] ?? []), $wanted);
}

// [template, warnings] with this data.
$data = ['s' => 'x', 'n' => 3, 'z' => '', 'l' => [['a' => '5', 'c' => ['y']], ['b' => 2, 'c' => []]], 'e' => [],
    'w' => ['num' => ['p', 'q']], 'v' => ['num' => 1], 'part' => 'part.txt', 'k' => ['optionals' => 1]];
$withData = [
    ['{s}{z}{n}{q \'\'}{q s}{k::optionals}{htmlspecialchars z}{htmlspecialchars k::optionals}', 'unprinted-value'],
    ['{q}{q r}{htmlspecialchars q}{dynamic q}{*}{/dynamic}', 'missing-value missing-value missing-value missing-value'],
    ['{optional q}{q::a}{dynamic q}{/dynamic}{/optional}{!optional s}{q}{/optional}{dynamic e}{*::x}{q}{/dynamic}', ''],
    ['{dynamic l}{*::a}{*::b}{*::d}{htmlspecialchars *::d}{htmlspecialchars *::a}{[*]}{/dynamic}',
        'missing-value missing-value'],
    ['{dynamic r,l}{dynamic r::*::c}{*}{*::x}{r::*::b}{/dynamic}{dynamic *::a}{/dynamic}{dynamic r::*}{/dynamic}{/dynamic}',
        'missing-value missing-value loop-over-no-array'],
    ['{dynamic w}{*}{*::x}{/dynamic}{dynamic v}{*}{/dynamic}{dynamic s}{/dynamic}',
        'missing-value loop-over-no-array loop-over-no-array'],
    ['{l}{htmlspecialchars l}{dynamic l}{*}{htmlspecialchars *::c}{/dynamic}',
        'array-as-text unprinted-value array-as-text array-as-text'],
    ['{include part}{include gone}', 'missing-include'],
    ['{dynamic x,l}{include part}{/dynamic}', ''],
];
put(['part.txt' => '{s}{x::*::c \'\'}', 'data.json' => json_encode($data)]);
foreach ($withData as $i => [$template]) {
    put(["data/$i.tpl" => $template]);
}
$got = warnings('data', '--data data.json --off unknown-loop');
foreach ($withData as $i => [$template, $wanted]) {
    compare($template, implode(' ', $got["$i.tpl"] ?? []), $wanted);
}
compare('the part', $got['part.txt'] ?? [], ['array-as-text']);
put(['numbers/a.tpl' => '{n}{dynamic l}{*::a *::b}{/dynamic}', 'numbers/b.tpl' => '{s}{n}']);
compare('numbers', warnings('numbers', '--security --data data.json'), ['b.tpl' => ['unescaped-value']]);
?>
--EXPECT--
examples checked
