--TEST--
template check: what people from other languages write is explained; what only looks like it, and the examples, are quiet
--EXTENSIONS--
template
ctype
mbstring
intl
--FILE--
<?php
require __DIR__ . '/tool.inc';
require __DIR__ . '/manual.inc';
require toolRoot() . '/tool/autoload.php';

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Options;

/** "column name" of each finding, errors as "column error". */
function found(string $template, ?array $data = null): string
{
    return implode(' ', array_map(
        fn(Finding $finding) => "$finding->column " . ($finding->name ?? 'error'),
        (new Checker(new Options(data: $data)))->checkText($template)
    ));
}

// By family: [template, what is found]; or "template" => a part of the message, which shows the right way.
$families = [
    'foreign-tag' => [
        '{if user}yes{/if}', '{else}', '{elseif x}', '{else if x}', '{foreach $rows as $row}', '{for i in rows}{endfor}',
        '{endif}', '{endforeach}', '{IF x}', '{/include}', '{/each}', '{% if user %}', '{%- endfor -%}', '{# note #}',
        '{* note *}', '{!! $html !!}', '{#each rows}', '{:else}', '{>part}', '{set x = 3}', '{block main}', '{literal}',
        '{if $a == \'x\'}' => '"{optional name}...{/optional}"', '{foreach a as b}' => '"{dynamic row,rows}...{/dynamic}"',
    ],
    'dollar-variable' => [
        '{$name}', '{htmlspecialchars $name}', '{optional $a}{/optional}', '{dynamic $rows}{/dynamic}', '{include $page}',
        '{name $nick \'x\'}', '{$user->name}' => '"{user::name}"', '{rawurlencode $a.b}' => '"{rawurlencode a::b}"',
        '{user::$name}',
    ],
    'filter' => [
        '{name|upper}', '{name | lower}', '{optional rows|length}{/optional}', '{dynamic rows|reverse}{/dynamic}',
        '{name|escape}' => '"{htmlspecialchars name}"', '{user.name|e}' => '"{htmlspecialchars user::name}"',
        '{html|raw}' => '"{html}"', '{n|default}' => '{n \'the text\'}',
    ],
    'call' => ['{count(rows)}', '{date(now) \'x\'}', '{user.name()}', '{optional isset(a)}{/optional}',
        '{htmlspecialchars(name)}' => '"{htmlspecialchars name}"'],
    'member' => [
        '{user.name}' => '"{user::name}"', '{user->name}' => '"{user::name}"', '{user["name"]}' => '"{user::name}"',
        '{tags[0]}' => '"{tags::0}"', '{htmlspecialchars a.b.c}' => '"{htmlspecialchars a::b::c}"',
        '{optional a.b}{/optional}', '{dynamic r,a.b}{/dynamic}', '{footer.tpl}' => '"{include footer.tpl}"',
    ],
    'operator' => [
        '{a ?? b}' => 'side by side', '{a ?: \'x\'}', '{a ? b : c}', '{a, b}' => 'side by side', '{a,b}', '{a or b}', '{a + b}',
        '{not a}' => '"{!optional name}', '{!a}', '{a == b}', '{a && b}', '{a || b}', '{x=3}', '{price * 2}',
        '{htmlspecialchars a ?? b}',
    ],
    'double-quotes' => ['{name "none"}' => "'none'", '{"text"}', '{optional a "x"}{/optional}', '{htmlspecialchars name "x"}'],
    'double-braces' => [
        '{{name}}', '<p>{{ name }}</p>', '{{ $name }}', '{{ user.name|upper }}' => '"{htmlspecialchars user::name}"',
        '{{ user->name }}', '{{{html}}}' => '"{html}"', '{{#if user}}', '{{/if}}', '{{> part}}', '{{-- note --}}', '{{else}}',
    ],
    'misspelt-keyword' => ['{Optional a}', '{OPTIONAL a}', '{/Optional}', '{optonal a}', '{dyanmic rows}', '{inlcude x}',
        '{htmlspecialchar a}', '{htmlSpecialChars a}' => '"htmlspecialchars"', '{!Optional a}', '{adslashes a}'],
    'blank-before-keyword' => ['{ optional a}', '{ /optional }', "{\n!optional a b}", '{ dynamic r,rows }', '{ include a.tpl }',
        '{ htmlspecialchars a::b }' => '"{htmlspecialchars a::b}"'],
    'php-code' => ['<?php echo $x; ?>', '<?= $x ?>', '<?PHP'],
    'at-directive' => ['@if ($x)', '@foreach($rows as $row)', 'a @endif', '@include(\'a\')', '@else'],
    'foreign-loop' => [
        '{dynamic rows as row}{/dynamic}' => '"{dynamic row,rows}"', '{dynamic $rows as $k => $row}{/dynamic}' => '"row::[*]"',
        '{rdynamic row in rows}{/rdynamic}' => '"{rdynamic row,rows}"', '{dynamic k, row in a.rows}{/dynamic}' => '"{dynamic row,a::rows}"',
    ],
    'optional-operator' => [
        '{optional a == b}{/optional}' => '"{optional a \'b\'}"', '{optional a == \'b c\'}{/optional}' => '"{optional a \'b c\'}"',
        '{optional a != "b"}{/optional}' => '"{!optional a \'b\'}"', '{optional a=b}{/optional}', '{optional a = b}{/optional}',
        '{optional a > 3}{/optional}', '{optional a<3}{/optional}', '{optional a && b}{/optional}' => '{optional a}{optional b}',
        '{optional a and b}{/optional}', '{optional a or b}{/optional}', '{optional not a}{/optional}' => '"{!optional a}"',
        '{optional !a}{/optional}', '{!optional !a}{/optional}' => '"{optional a}"', '{optional empty a}{/optional}',
        '{optional $a === \'x\'}{/optional}', '{optional a is b}{/optional}',
    ],
    'wrong-closing-tag' => ['{/!optional}' => '"{/optional}"', '{/ optional}', '{end dynamic}', '{/htmlspecialchars}', '{\optional}'],
    'quoted-include' => ['{include \'a.tpl\'}' => '"{include a.tpl}"', '{include "a.tpl"}', '{include file=\'a.tpl\'}',
        '{include file=a.tpl}' => '"{include a.tpl}"', '{include(\'a.tpl\')}', '{include a.tpl with user}', '{include a.tpl x=1}'],
    'blank-in-reference' => ['{htmlspecialchars a \'b\'}', '{rawurlencode a b}'],
    'lost-text' => [
        "<style>h1{font-family: 'Arial'}</style>" => 'only "Arial" is left', "<STYLE media='x'>a{b:'c'}</STYLE>",
        "<script>function f(){return 'x'}</script>", "<script type=module>a={b: 'c'}</script>",
    ],
    'lost-brace' => ['<script>if (a) { if (b) { go() }}</script>', "<style>@media print { a { b: c }}</style>"],
    'byte-order-mark' => ["a\u{FEFF}b"],
];
$count = 0;
foreach ($families as $name => $mistakes) {
    foreach ($mistakes as $key => $value) {
        [$template, $part] = is_int($key) ? [$value, ''] : [$key, $value];
        $count++;
        $findings = (new Checker())->checkText($template);
        $warnings = array_filter($findings, fn(Finding $finding) => !$finding->isError());
        $isRight = $warnings && array_filter($warnings, fn(Finding $finding) => $finding->name !== $name
            && $finding->name !== 'foreign-tag') === [] && str_contains(reset($warnings)->message, $part);
        $isRight || print(json_encode($template) . ': ' . json_encode($findings, JSON_UNESCAPED_SLASHES) . "\n");
    }
}
echo $count > 140 ? "mistakes found\n" : "only $count mistakes\n";

// What is legal, though it looks like that.
$quiet = [
    "{name 'a.b|c ?? d'} {price '0.00'} {'if (x)'} {a 'not b'} {a b::c-d e_f} {a:b}" => null,
    "{optional a '=='}x{/optional}{optional a '> 3'}x{/optional}{optional a ==}x{/optional}{optional a not found}x{/optional}" => null,
    '{optional a red and blue}x{/optional}{optional a x.y}x{/optional}{optional a $5}x{/optional}' => null,
    'if (x) { y } else { z }  a -> b, $c, d|e, <?xml version="1.0"?> user@if.example @media' => null,
    '<style>p { margin: 0 } a{{color:red}} i{top:0;left:0} @media print { a { b: c } }</style>' => null,
    '<script>f({a,b}); x => {return y.z(1)|2}; if (a) {{ b({c:1}) }} var { include } = d; `${e}`</script>' => null,
    '<script>if (a) { b }} if (c) { d }} {{e}}</script>' => null,
    '<a data-x=\'{"a":1,"b":"c.d"}\' x-data="{open:false}" pattern="[a-z]{2,3}">' => null,
    '\\frac{{1}}{{2}} x{{{name}}} ${{name}} {{user::name}} {{{{ name }}}} a[{{i}}]' => null,
    '{options} {else_where} {form} {for} {set} {block} {not}' => null,
    "\u{FEFF}<p>{name}" => null,
    // With sample data, a name is what the data says.
    '{user.name}{if}{$x}{a|b}{f(x)}{a,b}{not name}{htmlspecialchars user.name}{optional user.name}x{/optional}' =>
        ['user.name' => 'x', 'if' => 'x', '$x' => 'x', 'a|b' => 'x', 'f(x)' => 'x', 'a,b' => 'x', 'not' => 'x'],
    '{dynamic rows}{*::user.name}{htmlspecialchars *::$x}{/dynamic}' => ['rows' => [['user.name' => 'x', '$x' => 'y']]],
];
foreach ($quiet as $template => $data) {
    $found = found($template, $data);
    $found === '' || print(json_encode($template) . ": $found\n");
}
echo found('{dynamic rows}{*::user.name}{user.name}{*::a}{/dynamic}', ['rows' => [['user' => ['name' => 'x'], 'a' => 1]]]), "\n";

// The pages of the manual that are about mistakes show some; even there nothing is foreign.
$own = fn(Finding $finding) => !in_array($finding->name, ['missing-include', 'outside-loop', 'unknown-loop'], true);
$foreign = array_flip(array_keys($families));
unset($foreign['misspelt-keyword'], $foreign['blank-in-reference']);
$examples = 0;
foreach ([toolRoot() . '/README.md', ...glob(toolRoot() . '/docs/*.md')] as $page) {
    $showsMistakes = in_array(basename($page), ['reference.md', 'surprises.md', 'messages.md'], true);
    foreach ((new Manual(file_get_contents($page)))->examples as $example) {
        $text = $example->kind === 'script' || $example->warnings ? '' : $example->files[$example->source] ?? $example->source;
        $examples += (int) ($text !== '');
        foreach (array_filter((new Checker())->checkText($text), $own) as $finding) {
            if (!$showsMistakes || isset($foreign[$finding->name ?? ''])) {
                echo basename($page), ":$example->line $finding->name $finding->message\n";
            }
        }
    }
}
echo $examples > 200 ? "manual checked\n" : "only $examples examples\n";
$folders = ['examples/shop/templates', 'bench/pages/*', 'site/welcome', 'site/welcome/*'];
$templates = array_merge(...array_map(fn($folder) => glob(toolRoot() . "/$folder/*.tpl"), $folders));
foreach (array_filter((new Checker())->checkFiles($templates), $own) as $finding) {
    echo "{$finding->source->name}:$finding->line $finding->name $finding->message\n";
}
echo count($templates) > 20 ? "examples checked\n" : 'only ' . count($templates) . " templates\n";

// Time grows with the text: columns, names of loops and blocks are found once. Squares of these would take minutes.
$long = [
    str_repeat('{optional a}{b.c}é{/optional}', 8000),
    implode('', array_map(fn($i) => "{dynamic n$i,a}{gone::*}", range(1, 4000))) . str_repeat('{/dynamic}', 4000),
    str_repeat('{x{ {optional a} <script> {{ name }} ', 4000),
];
foreach (watcher() === 'valgrind' ? [] : $long as $i => $text) {
    $start = microtime(true);
    (new Checker(new Options(data: ['a' => [['a' => 1]], 'b' => 'x'])))->checkText($text);
    $seconds = microtime(true) - $start;
    $seconds < 20 || printf("text %d took %.1f seconds\n", $i, $seconds);
}
?>
--EXPECT--
mistakes found
16 member 30 member
manual checked
examples checked
