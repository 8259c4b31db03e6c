<?php

// php browser.php DOCS SEED FOLDER [CHROMIUM]
// Holds the checker against a browser: the examples of docs/security.md break out where the checker warns and nowhere
// else; made-up HTML is cut as the browser cuts it; where the checker is quiet about a value in made-up HTML, no attack
// changes what the page consists of. The last line is the count.

namespace TemplateTool\Page;

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;

require __DIR__ . '/../../tool/autoload.php';
require __DIR__ . '/../security.inc';

const MARK = 'QMARKQ';
const TEXTS = 20000;
const TEMPLATES = 2500;

// Where HTML and SVG overlap inside of each other, the tree of elements decides, which a scanner doesn't keep: one text in so many.
const OVERLAPS = 4000;

// Pieces of HTML, the dangerous ones more than once.
const PIECES = [
    '<p>', '</p>', '<p title=', '<a href="/x', '<b ', '"', '"', "'", "'", ' ', ' ', '>', '>', '>', '<', '/', '=', '=',
    '<!--', '-->', '--!>', '--', '-', '!', '<!', '<![CDATA[', ']]>', '<?', '</', "\n", "\t", 'x', 'y=z', '&quot;', '&#39;',
    '<script>', '<script type=x>', '<script ', '</script>', '</script ', '</scrip', '<style>', '</style>', '</style/',
    '<title>', '</title>', '<textarea>', '</textarea>', '<xmp>', '</xmp>', '<iframe>', '</iframe >', '<noframes>', '</noframes>',
    '<svg>', '</svg>', '<svg/>', '<math>', '</math>', '<svg><style>', '<svg><script>', '<foreignObject>', '</foreignObject>',
    '<path/>', '<div class="', '<!doctype html>', '<TITLE', '<Script', "<p\ra", "\f",
];

// What the place of a value may look like in front and behind.
const FRONTS = [
    "<p title='", '<p title="', '<p title=', '<p ', '<p x', '<p onclick=', '<iframe src=', '<', '<!-- ', '<!--', '<textarea>', '<title>', '<a href="',
    '<a href="/', '<a href=', '<script src="/', '<link rel=stylesheet href="', '<iframe srcdoc="', '<p style="color:', '<p>', '',
    '<svg><a xlink:href="/?', '<meta http-equiv=refresh content="0;url=', '<style>', '<style>p { color: ',
];
const ENDS = ['>', '">', "'>", ' -->', '-->', '><i>-->', '=x>', '</textarea>', '</title>', '" id="x">', ' }</style>', '">\'>-->]]>'];

const ATTACKS = [
    '<b>', '"><b>', "'><b>", '" onclick="hit()', "' onclick='hit()", 'x onclick=hit()', '--><b>', '--', '--!', ']]><b>',
    '</script><b>', '</style><b>', '</title><b>', '</textarea><b>', '</iframe><b>', 'onclick', 'script', '/', '>', '=',
    'javascript:hit()', '//else.example/x', 'https://else.example/', '&quot; onclick=hit()', '&lt;b&gt;', '\\', '`',
];

/** A text up to the mark, and how it goes on so that every tag and comment comes to its end. */
function madeUp(): array
{
    $text = '';
    for ($i = mt_rand(1, 14); $i > 0; $i--) {
        $text .= PIECES[mt_rand(0, count(PIECES) - 1)];
    }
    return [$text, $text . MARK . '">\'>-->]]>'];
}

/** What the browser may say of a mark in this place: [kind, element]. "nowhere": browsers drop the rest of end tags. */
function allowed(Html $html): array
{
    [$state, $element] = $html->place();
    return match ($state) {
        State::Text, State::Cdata => ['text'],
        State::Raw => ["text $element"],
        State::Comment => ['comment'],
        State::Bogus => ['comment', 'nowhere'],
        State::TagName => ['tag', 'nowhere'],
        State::BeforeName, State::Name, State::AfterName => ['name', 'nowhere'],
        default => ['value', 'nowhere'],
    };
}

/** A template that prints a value in made-up HTML. */
function template(): string
{
    $keyword = ['htmlspecialchars', 'rawurlencode', 'htmlentities', 'addslashes'][mt_rand(0, 3)];
    $front = mt_rand(0, 2) ? '' : madeUp()[0];
    return $front . FRONTS[mt_rand(0, count(FRONTS) - 1)] . "{{$keyword} value}" . ENDS[mt_rand(0, count(ENDS) - 1)];
}

/** How a template looks with a harmless value and with each attack; nothing when the checker warns of it. */
function attacked(string $template): array
{
    if ((new Checker(new Options(security: true)))->checkText($template)) {
        return [];
    }
    $print = static fn(string $value): string => \template($template, ['value' => $value], true);
    return array_map(static fn(string $attack): array => ["$template with $attack", [$print('x'), $print($attack)]], ATTACKS);
}

/** @return array{rows: list<array>, places: list<array>, changes: list<bool>} */
function ask(array $cases, string $folder, string $chromium): array
{
    copy(__DIR__ . '/browser.html', "$folder/browser.html");
    file_put_contents("$folder/cases.js", 'const cases = ' . json_encode($cases, JSON_THROW_ON_ERROR | JSON_HEX_TAG) . ';');
    $command = [
        $chromium, '--headless', '--no-sandbox', '--disable-gpu', "--user-data-dir=$folder/profile", '--mute-audio',
        '--host-resolver-rules=MAP * ~NOTFOUND', '--virtual-time-budget=600000', '--timeout=240000', '--dump-dom',
        "file://$folder/browser.html",
    ];
    $process = proc_open($command, [1 => ['pipe', 'w'], 2 => ['file', "$folder/chromium.log", 'w']], $pipes);
    $page = stream_get_contents($pipes[1]);
    proc_close($process);
    if (!preg_match('~<pre id="results">([\w+/=]+)</pre>~', $page, $match)) {
        exit("Chromium gave no answer; what it said is in $folder/chromium.log\n");
    }
    return json_decode(base64_decode($match[1]), true, 512, JSON_THROW_ON_ERROR);
}

[, $docs, $seed, $folder, $chromium] = $argv;
mt_srand((int) $seed);
$examples = securityExamples(file_get_contents("$docs/security.md"));
$rendered = static fn(array $example, string $value): string =>
    \template($example['template'], ['value' => $value], true);
$texts = array_map(madeUp(...), range(1, TEXTS));
$quiet = array_merge(...array_map(static fn(): array => attacked(template()), range(1, TEMPLATES)));
$answers = ask([
    'rows' => array_map(static fn(array $example): array => [
        'harmless' => $rendered($example, 'x'),
        'harmful' => $rendered($example, $example['value']),
    ], $examples),
    'places' => array_column($texts, 1),
    'pairs' => array_column($quiet, 1),
], $folder, $chromium);

$passed = 0;
$faults = [];
foreach ($examples as $i => $example) {
    $breaksOut = $answers['rows'][$i]['isChanged'] || $answers['rows'][$i]['runs'];
    if ($breaksOut === ($example['warning'] !== '')) {
        $passed++;
    } else {
        $faults[] = "$example[template] with $example[value]: " . ($breaksOut ? 'breaks out' : 'does nothing');
    }
}
$seen = [];
$overlaps = 0;
foreach ($texts as $i => [$text]) {
    [$kind, $element] = $answers['places'][$i];
    $html = new Html();
    // In pieces, as the tags of a template cut it.
    foreach (str_split($text, mt_rand(1, 20)) as $piece) {
        $html->read($piece);
    }
    $got = $kind === 'text' && Element::isRaw($element) ? "text $element" : $kind;
    $seen[$got] = ($seen[$got] ?? 0) + 1;
    if (in_array($got, allowed($html), true)) {
        $passed++;
    } elseif (preg_match('~<(svg|math)~', $text) && ++$overlaps <= TEXTS / OVERLAPS) {
        continue;
    } else {
        $faults[] = json_encode($text) . ": the browser says $got, the checker " . implode(' or ', allowed($html));
    }
}
foreach ($quiet as $i => [$case]) {
    $answers['changes'][$i] ? $faults[] = "not a word about $case" : $passed++;
}
count($quiet) > TEMPLATES || $faults[] = 'hardly any template is taken for right';
foreach (['text', 'text script', 'text title', 'comment', 'tag', 'name', 'value'] as $kind) {
    ($seen[$kind] ?? 0) > 20 || $faults[] = "hardly any text has the mark here: $kind";
}
echo implode("\n", array_slice($faults, 0, 30)), $faults ? "\n" : '';
echo "$passed passed, ", count($faults), " failed\n";
exit($faults ? 1 : 0);
