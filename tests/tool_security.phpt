--TEST--
template check --security: the manual's table of places, ways through sections, loops and includes, what is vouched for
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
require __DIR__ . '/security.inc';
require toolRoot() . '/tool/autoload.php';

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Options;

/** The names of what is found, in order. */
function found(string $template, string $name = 'page.tpl', array $vouched = [], ?array $data = null): array
{
    $checker = new Checker(new Options([folder()], ['missing-include'], true, $data, vouched: $vouched));
    return $checker->checkText($template, $name);
}

function compare(string $what, array $findings, string $wanted): void
{
    $got = implode(' ', array_map(fn(Finding $finding) => $finding->name ?? $finding->message, $findings));
    if ($got !== $wanted) {
        echo "$what: ", $got ?: 'nothing', "\nexpected: ", $wanted ?: 'nothing', "\n";
    }
}

$examples = securityExamples(file_get_contents(toolRoot() . '/docs/security.md'));
foreach ($examples as ['template' => $template, 'warning' => $warning]) {
    compare($template, found($template), $warning);
}
echo count($examples) > 60 ? 'all' : 'hardly any', " examples of the manual\n";

// [template, warnings]: each way to a value counts, and no other.
$ways = [
    ['<p title={optional a}"{/optional}{!optional a}"{/optional}{htmlspecialchars v}">', ''],
    ['<p title={optional a}"{/optional}{optional b}"{/optional}{htmlspecialchars v}">', 'unquoted-attribute'],
    ["<p title={optional a x}'{/optional}{!optional a x}\"{/optional}{htmlspecialchars v}{optional a x}'{/optional}"
        . '{!optional a x}"{/optional}>{htmlspecialchars v}', 'single-quoted-attribute'],
    ['<a href="{optional a}https://a.example/{/optional}{!optional a}/b/{/optional}{htmlspecialchars v}">', ''],
    ['<a href="{optional a}https://a.example/{/optional}{htmlspecialchars v}">', 'script-address'],
    ['{dynamic l}<script>{/dynamic}{htmlspecialchars v}', 'wrong-escaping'],
    ['{dynamic l}{htmlspecialchars *}<b title=\'{/dynamic}', 'single-quoted-attribute'],
    ['{dynamic l}{optional *}<b title={/optional}{!optional *}>{/optional}{htmlspecialchars v}{/dynamic}', 'unquoted-attribute'],
    ['<p title="{dynamic l}{htmlspecialchars *}, {/dynamic}">{dynamic l}{dynamic *}<b>{*::x \'\'}{/dynamic}{/dynamic}',
        'unescaped-value'],
    ['{optional}<script>{/optional}{htmlspecialchars v}', ''],
    ['{v \'<script>\'}{htmlspecialchars v}', 'unescaped-value wrong-escaping'],
    ['{\'<script>\'}{rawurlencode v}', 'wrong-escaping'],
    ['<script>if (a) {{ b = {}; c = /["{rawurlencode v}]/ }}</script>{htmlspecialchars v}', ''],
    ['<script>`${{ f(`{rawurlencode v}`, {{}}, {rawurlencode v}) }}`; d = 1 / 2; "{rawurlencode v}"</script>', 'wrong-escaping'],
    ["<script>// it's\nf('{rawurlencode v}') /* ' */ + {rawurlencode v}</script>", 'wrong-escaping'],
    ['<script><!-- <script> </script> {htmlspecialchars v} --></script>{htmlspecialchars v}', 'wrong-escaping'],
    ['<script type="text/x-parts">{htmlspecialchars v}</script><script src=x></script>{htmlspecialchars v}', ''],
    ['<!--> {htmlspecialchars v} --!> <a href="/{rawurlencode v}">{htmlspecialchars v}</a><title><b {htmlspecialchars v}</title>', ''],
    ['<svg><title>{htmlspecialchars v}</title><style>{htmlspecialchars v}</style></svg>{htmlspecialchars v}', 'wrong-escaping'],
    ['<{optional a}b{/optional}{!optional a}i{/optional} title="{htmlspecialchars v}">', ''],
    ['<a href="{base}{htmlspecialchars path}">', 'unescaped-value'],
    ['<p on{rawurlencode v}="x">{include data:text/html,x}{include php://stdin}{include data::file}',
        'value-as-name include-by-wrapper include-by-wrapper include-from-data'],
    ['<STYLE>/* {rawurlencode v} */ @import "{rawurlencode v}"; a:hover { b: c }</sTyle >{htmlspecialchars v}', ''],
    // Included files are followed in place, each from where it begins, and once more when it begins elsewhere.
    ['{include open.part}{htmlspecialchars v}</script>{htmlspecialchars v}', 'wrong-escaping'],
    ['<p>{include value.part}<p title="{include value.part}">', ''],
    ['<p>{include value.part}<p title=\'{include value.part}\'>', 'single-quoted-attribute'],
    ['{dynamic l}{include open.part}{include close.part}{/dynamic}{include circle.part}{htmlspecialchars v}', 'Include block bad parameter \'circle.part\': circle is detected'],
];
put(['open.part' => '<script>', 'close.part' => '</script>', 'value.part' => '{htmlspecialchars v}',
    'circle.part' => '{include circle.part}']);
foreach ($ways as [$template, $warnings]) {
    compare($template, found($template), $warnings);
}
compare('page.css', found('p { color: {htmlspecialchars v} }', 'page.css.tpl'), 'wrong-escaping');
compare('page.js', found('f("{rawurlencode v}")', 'page.js'), '');

// What is over leaves nothing behind, or the rounds of a loop would never be alike.
$html = new TemplateTool\Page\Html();
$html->read('<p a="b" c=d e><br/><script type=x>"</script><style>a:b</style ><!-- x --><svg><a/></svg><title>"</title>');
echo $html->key() === (new TemplateTool\Page\Html())->key() ? '' : "left behind: " . json_encode($html->key()) . "\n";

// What is vouched for: one tag behind the mark, references of the project's list, includes, numbers of the sample data.
$mark = '{optional}vouched: our own{/optional}';
$vouched = [
    ["$mark{v}{v}", 'unescaped-value'],
    ["<a href=\"$mark{htmlspecialchars v}\">$mark {v}", 'unescaped-value'],
    ["{optional}vouchedfor{/optional}{v}{optional vouched}x{/optional}{v}{!optional}vouched{/optional}{v}",
        'unescaped-value unescaped-value unescaped-value'],
    ["$mark{include page::layout}{include page::layout}", 'include-from-data'],
    ['{known::a}{known::a v}<script>{dynamic rows,x}{rows::*}{known::a rows::*}{/dynamic}</script>', 'unescaped-value'],
];
foreach ($vouched as [$template, $warnings]) {
    compare($template, found($template, vouched: ['known::a', 'rows::*']), $warnings);
}
compare('numbers', found('<p style="top: {n}px"><b {n}>{htmlspecialchars s}{s}', data: ['n' => 3, 's' => 'x']),
    'value-as-name unescaped-value');

// What an editor offers: [template, kind of action, template afterwards]; it leaves no finding.
$actions = [
    ['<p>{a::b}', 'escape', '<p>{htmlspecialchars a::b}'],
    ['<script src="/{addslashes v}">', 'escape', '<script src="/{rawurlencode v}">'],
    ['<script>{v}', 'vouch', '<script>{optional}vouched{/optional}{v}'],
    ['<p>{include a::b}', 'vouch', '<p>{optional}vouched{/optional}{include a::b}'],
];
foreach ($actions as [$template, $kind, $wanted]) {
    [$finding] = found($template);
    foreach ($finding->actions as $action) {
        if ($action->kind === $kind) {
            $edit = $action->edits[0];
            $got = substr_replace($template, $edit->text, $edit->offset, $edit->length);
            $wanted === $got || print("$template: $got\n");
            compare($got, found($got), '');
            continue 2;
        }
    }
    echo "$template: no $kind\n";
}
compare('no escaping is enough', array_filter(found('<script>{v}'), fn($each) => count($each->actions) !== 1), '');

$shop = escapeshellarg(toolRoot() . '/examples/shop');
[, $output] = tool("check --project $shop/template.json");
preg_match('~^No findings in \d+ templates?\.~', $output) || print("the shop: $output");
[$status, $output] = tool("check --security --no-project $shop/templates");
$status === 1 && str_contains($output, 'product.tpl:1:') || print("the shop without its list: $output");

// In time: nested loops that change the page in each round.
// A tool that watches takes a hundred times as long.
$start = hrtime(true);
$depth = getenv('TEST_WATCHER') ? 3 : 30;
found(str_repeat('{dynamic a}<p {optional *}title="{/optional}', $depth) . '{v}' . str_repeat('{/dynamic}', $depth));
found(str_repeat("{optional a}<p title=\"{v}\">\n{/optional}", 60 * $depth));
echo hrtime(true) - $start < 2e10 || getenv('TEST_WATCHER') ? "in time\n" : "too slow\n";
?>
--EXPECT--
all examples of the manual
in time
