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

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;

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
    'w' => ['num' => ['p', 'q']], 'v' => ['num' => 1], 'part' => 'part.txt', 'k' => ['optionals' => 1], 'f' => 1.5];
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
    ['{dynamic e}{include q::z}{/dynamic}{include q::y}', 'missing-include'],
    ['{dynamic l}{a}{htmlspecialchars b}{optional a}{/optional}{s}{a \'x\'}{a s}{dynamic c}{/dynamic}{/dynamic}',
        'missing-star missing-star missing-star missing-star missing-star'],
    ['{dynamic r,l}{r::a}{dynamic r::*::c}{a}{r::*::a}{/dynamic}{/dynamic}{a \'\'}', 'missing-star missing-star'],
    ['{optional f 1.5}{/optional}{optional k b}{/optional}{optional n 4}{/optional}{optional s x}{/optional}{optional f}{/optional}'
        . '{dynamic l}{optional *::c y}{/optional}{optional [*] 0}{/optional}{/dynamic}', 'never-equal never-equal never-equal'],
    ['{dynamic r,l}{optional r::*::b}{r::*::a}{dynamic r::*::c}{*}{z}{/dynamic}{/optional}{/dynamic}', 'missing-value'],
    ['{rdynamic r,l}{optional [*] 1}{*::a}{*::b}{/optional}{!optional *::a 5}{*::a}{/optional}{optional *::a \'5\'}{*::a}{*::b}{/optional}{/rdynamic}',
        'missing-value missing-value missing-value'],
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
// However deep loops lie inside each other, an element is looked at once.
put(['deep.tpl' => str_repeat('{dynamic l}', 30) . '{*::q}' . str_repeat('{/dynamic}', 30),
    'deep.json' => json_encode(['l' => array_fill(0, 300, ['a' => 1])])]);
compare('products', json_decode(tool('check deep.tpl -d deep.json --format json')[1], true)[0]['name'] ?? '', 'missing-value');

// On made-up templates: what is said to be missing is found nowhere by the engine.
$names = ['a', 'b', 'l'];
$pick = static fn(array $list): mixed => $list[mt_rand(0, count($list) - 1)];
$value = static function (int $depth) use (&$value, $pick, $names): mixed {
    if ($depth === 0 || mt_rand(0, 2) === 0) {
        return $pick([0, 1, 'x', '', [], ['num' => [1]]]);
    }
    $array = [];
    for ($i = mt_rand(1, 3); $i > 0; $i--) {
        mt_rand(0, 1) ? $array[] = $value($depth - 1) : $array[$pick([...$names, 'num'])] = $value($depth - 1);
    }
    return $array;
};
mt_srand(7);
$missing = 0;
for ($i = watcher() === 'valgrind' ? 100 : 3000; $i > 0; $i--) {
    $data = ['a' => $value(3), 'l' => $value(3)];
    $reference = static fn() => $pick(['', '*', 'x::*', 'y::*']) ?: $pick($names);
    $path = static fn() => $reference() . $pick(['', '::' . $pick($names)]);
    $open = $close = '';
    for ($k = mt_rand(1, 4); $k > 0; $k--) {
        $kind = $pick(['dynamic', 'dynamic', 'optional', '!optional']);
        $name = $kind === 'dynamic' && $k > 2 ? ['', '', '', 'x,', 'y,'][$k] : '';
        $open .= "{{$kind} $name" . $path() . ($kind !== 'dynamic' && mt_rand(0, 2) === 0 ? ' ' . $pick(['1', 'x']) : '') . '}';
        $close = ($kind === 'dynamic' ? '{/dynamic}' : '{/optional}') . $close;
    }
    $tag = $path();
    foreach ((new Checker(new Options(data: $data)))->checkText("$open{{$tag}}$close") as $finding) {
        if (in_array($finding->name, ['missing-value', 'missing-star'], true) && $finding->offset === strlen($open) + 1) {
            $missing++;
            [$text] = outcome(fn() => template("$open{{$tag} '-'}$close", $data, true));
            trim($text ?? '', '-') === '' || print(json_encode([$open . $tag, $data]) . " is found\n");
        }
    }
}
echo $missing > 60 ? "nothing found\n" : "only $missing missing\n";
compare('the part', $got['part.txt'] ?? [], ['array-as-text']);
put(['numbers/a.tpl' => '{n}{dynamic l}{*::a *::b}{/dynamic}', 'numbers/b.tpl' => '{s}{n}']);
compare('numbers', warnings('numbers', '--security --data data.json'), ['b.tpl' => ['unescaped-value']]);
?>
--EXPECT--
examples checked
nothing found
