<?php

// Prints the examples that the playground offers, as JSON: the page in welcome/, then each step of the guide.

/** @return array{title: string, note: string, files: array<string, string>, data: array} */
function welcome(string $folder): array
{
    $files = [];
    foreach (['page.tpl', 'parts/style.tpl'] as $name) {
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

/** The inline marks of Markdown as HTML. */
function inline(string $markdown): string
{
    return preg_replace(
        ['~\[([^\]]+)\]\([^)]*\)~', '~`([^`]+)`~', '~\*\*([^*]+)\*\*~', '~(?<![\w*])\*([^*]+)\*(?![\w*])~'],
        ['$1', '<code>$1</code>', '<b>$1</b>', '<i>$1</i>'],
        htmlspecialchars(trim($markdown), ENT_NOQUOTES)
    );
}

/** Only what the templates name: the steps of the guide build on the data of those before. */
function needed(array $data, string $templates): array
{
    // Between "::" stand the keys of arrays, in front of a comma or a star the names of loops.
    $isNamed = static fn(string $key): bool =>
        preg_match('~\{[^}]*(?<![\w:])' . preg_quote($key, '~') . '(?!\w|,|::\*|::\[)~', $templates) === 1;
    return array_filter($data, $isNamed, ARRAY_FILTER_USE_KEY);
}

/**
 * All templates of a section as one page, and the files it names as partials.
 *
 * @param array<string, mixed> $data what the sections before have left; this one's is added
 */
function step(string $title, string $text, array &$data): ?array
{
    preg_match('~^(.*?)(?=^```)~ms', $text, $intro);
    preg_match_all('~^```(php|template)(?: (\S+))?\n(.*?)^```$~ms', $text, $blocks, PREG_SET_ORDER);
    $pages = [];
    $files = [];
    foreach ($blocks as [, $language, $name, $content]) {
        if ($language === 'php') {
            if (str_starts_with($content, '$data = ')) {
                $data = array_replace($data, (static fn() => eval("$content return \$data;"))());
            }
        } elseif ($name !== '' && str_contains($name, '/')) {
            $files[$name] = $content;
        } elseif ($data) {
            $pages[] = $content;
        }
    }
    if (!$pages) {
        return null;
    }
    $page = implode("\n<hr>\n\n", array_map('trim', $pages));
    return [
        'title' => $title,
        'note' => inline(preg_replace('~:$~', '.', trim(strtr($intro[1] ?? '', ["\n" => ' '])))) ?: 'All of it at work.',
        'view' => str_contains($page, '<script>') ? 'source' : 'page',
        'files' => ['page.tpl' => $page] + $files,
        'data' => json(needed($data, $page . implode('', $files))),
    ];
}

/** JSON as people write it: what is short stands in one line. */
function json(mixed $value, string $indent = ''): string
{
    $line = json_encode($value, JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE);
    if (!is_array($value) || !$value) {
        return $value === [] ? '{}' : $line;
    }
    $isShort = $indent !== '' && strlen($indent . $line) <= 72;
    $parts = [];
    foreach ($value as $key => $each) {
        $name = array_is_list($value) ? '' : json_encode((string) $key, JSON_UNESCAPED_UNICODE) . ': ';
        $parts[] = $name . json($each, $isShort ? ' ' : "$indent  ");
    }
    [$open, $close] = array_is_list($value) ? ['[', ']'] : ['{', '}'];
    if ($isShort) {
        $blank = $open === '{' ? ' ' : '';
        return $open . $blank . implode(', ', $parts) . $blank . $close;
    }
    return "$open\n$indent  " . implode(",\n$indent  ", $parts) . "\n$indent$close";
}

$root = dirname(__DIR__, 2);
$examples = [welcome("$root/playground/welcome")];
$data = [];
preg_match_all('~^## ([^\n]+)\n(.*?)(?=^## |\z)~ms', file_get_contents("$root/docs/guide.md"), $sections, PREG_SET_ORDER);
foreach ($sections as [, $title, $text]) {
    $step = step($title, $text, $data);
    $step && $examples[] = $step;
}
echo json_encode($examples, JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_THROW_ON_ERROR), "\n";
