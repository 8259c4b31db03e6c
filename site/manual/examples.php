<?php

// Prints the examples of the manual as JSON, {"guide.md": [...], ...}, and those that the playground offers besides:
//   php examples.php NAME=PATH...
// Example: {line, kind, outcomeLine, text, warnings, state, reason}. state is {files: {name: text}, data: JSON text}, of
// which the file script.php is run or, where there is none, page.tpl is rendered. It is null for what isn't run in the
// browser; not-live.tsv has the reason.

require dirname(__DIR__, 2) . '/tests/manual.inc';

const PAGE = 'page.tpl';
const SCRIPT = 'script.php';

/**
 * The text of every file that the entry leads to; a template itself is page.tpl then.
 *
 * @param array<string, string> $files
 * @return array<string, string>
 */
function reached(string $entry, array $files, string $json): array
{
    $reached = [$entry === SCRIPT ? SCRIPT : PAGE => $files[$entry]];
    unset($files[$entry], $files[PAGE]);
    do {
        $all = implode("\n", $reached) . $json;
        $more = array_filter(
            array_diff_key($files, $reached),
            // A script may name a folder elsewhere.
            static fn(string $name): bool => str_contains($all, $entry === SCRIPT ? basename($name) : $name),
            ARRAY_FILTER_USE_KEY
        );
        $reached += $more;
    } while ($more);
    return $reached;
}

/** Only what the templates name: steps of the guide build on the data of those before. */
function needed(array $data, string $templates): array
{
    // Between "::" stand the keys of arrays, in front of a comma or a star the names of loops.
    $keyword = '!?(?:optional|r?dynamic|include|addslashes|html(?:entities|specialchars)|rawurlencode)';
    $isNamed = static fn(string $key): bool => preg_match(
        "~\{(?:[^}]*(?<![\w:])|$keyword)" . preg_quote($key, '~') . '(?!\w|,|::\*|::\[)~',
        $templates
    ) === 1;
    return array_filter($data, $isNamed, ARRAY_FILTER_USE_KEY);
}

/** JSON as people write it: what is short stands in one line. */
function json(mixed $value, string $indent = ''): string
{
    $flags = JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_PRESERVE_ZERO_FRACTION;
    $line = json_encode($value, $flags | JSON_THROW_ON_ERROR);
    if (!is_array($value) || !$value) {
        return $value === [] ? ($indent === '' ? '{}' : '[]') : $line;
    }
    $isShort = $indent !== '' && strlen($indent . $line) <= 72;
    $parts = [];
    foreach ($value as $key => $each) {
        $name = array_is_list($value) ? '' : json_encode((string) $key, $flags) . ': ';
        $parts[] = $name . json($each, $isShort ? ' ' : "$indent  ");
    }
    [$open, $close] = array_is_list($value) ? ['[', ']'] : ['{', '}'];
    if ($isShort) {
        $blank = $open === '{' ? ' ' : '';
        return $open . $blank . implode(', ', $parts) . $blank . $close;
    }
    return "$open\n$indent  " . implode(",\n$indent  ", $parts) . "\n$indent$close";
}

/**
 * What the playground and an example that is edited begin with.
 *
 * @return ?array{files: array<string, string>, data: string}
 */
function state(string $entry, array $files, array $data): ?array
{
    try {
        $json = json($data);
        $all = reached($entry, $files, $json);
        $json = json(needed($data, implode("\n", $all)));
    } catch (JsonException) {
        return null;
    }
    return json_decode(json($data), true) === $data ? ['files' => reached($entry, $files, $json), 'data' => $json] : null;
}

function data(Example $example): array
{
    return (static fn(string $code): array => eval($code))($example->data);
}

/**
 * A script as a file of its own, with the templates that it names. What a hidden script has made just before stands at its
 * beginning.
 *
 * @return array{files: array<string, string>, data: string}
 */
function script(Example $example, string $before): array
{
    $text = "<?php\n\n" . ($before === '' ? '' : "$before\n") . $example->source;
    // A function's own $data is another one.
    $isUsed = str_contains($example->source, '$data') && !str_contains($example->source, 'array $data');
    return [
        'files' => reached(SCRIPT, [SCRIPT => $text] + $example->files, ''),
        'data' => $isUsed ? json(data($example)) : '{}',
    ];
}

/** Why an example isn't live; null when it is. */
function reason(string $page, Example $example): ?string
{
    static $rows = null;
    $rows ??= array_map(
        static fn(string $line): array => explode("\t", $line),
        array_slice(file(__DIR__ . '/not-live.tsv', FILE_IGNORE_NEW_LINES), 1)
    );
    foreach ($rows as [$name, $text, $reason]) {
        $all = $example->source . ($example->files[$example->source] ?? '') . implode("\n", $example->warnings);
        if ($name === $page && str_contains($all, $text)) {
            return $reason;
        }
    }
    return null;
}

/** @return list<array<string, mixed>> */
function ofPage(string $page, Manual $manual): array
{
    $all = [];
    foreach ($manual->examples as $at => $example) {
        if ($example->hidden) {
            continue;
        }
        $reason = reason($page, $example);
        $all[] = [
            'line' => $example->line,
            'kind' => $example->kind,
            'outcomeLine' => $example->outcomeLine,
            'text' => $example->text,
            // In the page's own place every template is called page.tpl.
            'warnings' => $example->kind === 'script'
                ? $example->warnings
                : str_replace(" in $example->source", ' in ' . PAGE, $example->warnings),
            'state' => match (true) {
                $reason !== null || $example->kind === 'signature' => null,
                $example->kind === 'script' => script($example, $example->prepared ? hiddenBefore($manual, $at) : ''),
                default => state($example->source, $example->files, data($example)),
            },
            'reason' => $reason,
        ];
    }
    return $all;
}

/** The hidden scripts that stand directly before an example. */
function hiddenBefore(Manual $manual, int $at): string
{
    $text = '';
    while ($at > 0 && $manual->examples[--$at]->hidden) {
        $text = $manual->examples[$at]->source . $text;
    }
    return $text;
}

/** The inline marks of Markdown as HTML. */
function inline(string $markdown): string
{
    return preg_replace(
        ['~\[([^\]]+)\]\([^)]*\)~', '~`([^`]+)`~', '~\*\*([^*]+)\*\*~', '~(?<![\w*])\*([^*]+)\*(?![\w*])~'],
        ['$1', '<code>$1</code>', '<b>$1</b>', '<i>$1</i>'],
        htmlspecialchars(trim($markdown), ENT_NOQUOTES)
    );
}

/**
 * Each section of the guide as one page of the playground: all of its templates, under each other.
 *
 * @return list<array<string, mixed>>
 */
function steps(string $guide, Manual $manual): array
{
    $steps = [];
    $lines = explode("\n", $guide);
    $starts = array_keys(preg_grep('~^## ~', $lines));
    foreach ($starts as $number => $start) {
        $end = $starts[$number + 1] ?? count($lines);
        $inside = array_filter($manual->examples, static fn(Example $example): bool =>
            $example->kind === 'template' && $example->line > $start && $example->line <= $end && data($example));
        if (!$inside) {
            continue;
        }
        $texts = array_map(static fn(Example $example): string => trim($example->files[$example->source]), $inside);
        $page = implode("\n<hr>\n\n", array_unique($texts)) . "\n";
        $files = [PAGE => $page] + array_merge(...array_map(static fn(Example $example): array => $example->files, $inside));
        $intro = preg_split('~^```~m', implode("\n", array_slice($lines, $start + 1, $end - $start)))[0];
        $steps[] = [
            'title' => substr($lines[$start], 3),
            'note' => inline(preg_replace('~:$~', '.', trim(strtr($intro, ["\n" => ' '])))) ?: 'All of it at work.',
            'view' => str_contains($page, '<script>') ? 'source' : 'page',
        ] + state(PAGE, $files, array_replace(...array_map(data(...), array_values($inside))));
    }
    return $steps;
}

/** @return array<string, mixed> the example that the playground opens with */
function welcome(string $folder): array
{
    $files = [];
    foreach ([PAGE, 'parts/style.tpl'] as $name) {
        $files[$name] = file_get_contents("$folder/$name");
    }
    return [
        'title' => 'Start here',
        'note' => 'A page of plain HTML with <b>tags in braces</b>. The data below fills them in. Change anything: the page'
            . ' follows as you type.',
        'view' => 'page',
        'files' => $files,
        'data' => file_get_contents("$folder/data.json"),
    ];
}

$pages = [];
$playground = [welcome(dirname(__DIR__) . '/welcome')];
foreach (array_slice($argv, 1) as $argument) {
    [$name, $path] = explode('=', $argument, 2);
    $text = file_get_contents($path);
    $manual = new Manual($text);
    $pages[$name] = ofPage($name, $manual);
    if ($name === 'guide.md') {
        array_push($playground, ...steps($text, $manual));
    }
}
echo json_encode(
    ['pages' => $pages, 'playground' => $playground],
    JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_THROW_ON_ERROR
), "\n";
