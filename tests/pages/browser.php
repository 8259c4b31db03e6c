<?php
// php browser.php DOCS SEED FOLDER [CHROMIUM]
// Holds the checker against a browser: the examples of docs/security.md break out where the checker warns and nowhere
// else, and made-up HTML is cut as the browser cuts it. The last line is the count.

namespace TemplateTool\Page;

require __DIR__ . '/../../tool/autoload.php';
require __DIR__ . '/../security.inc';

const MARK = 'QMARKQ';
const TEXTS = 20000;

// Where end tags overlap inside SVG, the tree of elements decides, which a scanner doesn't keep: one text in so many.
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

/** @return array{rows: list<array>, places: list<array>} */
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
$answers = ask([
    'rows' => array_map(static fn(array $example): array => [
        'harmless' => $rendered($example, 'x'),
        'harmful' => $rendered($example, $example['value']),
    ], $examples),
    'places' => array_column($texts, 1),
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
    } elseif (preg_match('~<(svg|math).*</~s', $text) && ++$overlaps <= TEXTS / OVERLAPS) {
        continue;
    } else {
        $faults[] = json_encode($text) . ": the browser says $got, the checker " . implode(' or ', allowed($html));
    }
}
foreach (['text', 'text script', 'text title', 'comment', 'tag', 'name', 'value'] as $kind) {
    ($seen[$kind] ?? 0) > 20 || $faults[] = "hardly any text has the mark here: $kind";
}
echo implode("\n", array_slice($faults, 0, 30)), $faults ? "\n" : '';
echo "$passed passed, ", count($faults), " failed\n";
exit($faults ? 1 : 0);
