<?php

/*
 * Compares the engine's table of keywords with every other place that lists them, in both directions. Prints a line for
 * each difference.
 */

/** All texts that a pattern of alternatives, groups and optional characters matches. */
function expand(string $pattern): array
{
    $pattern = strtr($pattern, ['\/' => '/', '(?:' => '(']);
    [$texts] = alternatives($pattern, 0);
    return $texts;
}

/** @return array{list<string>, int} the texts, and where the alternatives end */
function alternatives(string $pattern, int $at): array
{
    $all = [];
    $texts = [''];
    for (; $at < strlen($pattern) && $pattern[$at] !== ')'; $at++) {
        if ($pattern[$at] === '|') {
            $all = [...$all, ...$texts];
            $texts = [''];
            continue;
        }
        [$part, $at] = $pattern[$at] === '(' ? alternatives($pattern, $at + 1) : [[$pattern[$at]], $at];
        if (($pattern[$at + 1] ?? '') === '?') {
            $part[] = '';
            $at++;
        }
        $longer = [];
        foreach ($texts as $text) {
            foreach ($part as $next) {
                $longer[] = $text . $next;
            }
        }
        $texts = $longer;
    }
    return [[...$all, ...$texts], $at];
}

/** What the pattern's first group matches, all over a file. */
function listed(string $file, string $pattern): array
{
    preg_match_all($pattern, file_get_contents($file), $found) || exit("$file: nothing was found\n");
    return $found[1];
}

chdir(dirname(__DIR__, 2));
$engine = listed('src/tree/keywords.h', '~^\tKeyword\{"([^"]+)"~m');
$grammar = 'editors/vscode-template/syntaxes/template.tmLanguage.json';
$begins = array_column(
    array_filter(json_decode(file_get_contents($grammar), true)['repository'], fn ($rule) => isset($rule['begin'])),
    'begin'
);
preg_match_all('~\(\\\\\{\)\(((?:[^()]|\((?1)\))*)\)~', implode("\n", $begins), $rules);
$mode = current(glob('{site,playground}/{,*/,*/*/}mode.ts', GLOB_BRACE)) ?: exit("there is no mode.ts\n");
$places = [
    'tool/src/Syntax/Kind.php' => listed('tool/src/Syntax/Kind.php', "~^    case \w+ = '([^']+)';~m"),
    $grammar => array_merge(...array_map(expand(...), $rules[1])),
    $mode => array_merge(...array_map(expand(...), listed($mode, '~KEYWORD = /\^\(\?:(.+)\)/~'))),
    'fuzz/template.dict' => listed('fuzz/template.dict', '~^"\{([!/]?[a-z]{5,})[ }]~m'),
];
$faults = 0;
foreach ($places as $file => $keywords) {
    foreach (array_diff($engine, $keywords) as $missing) {
        echo "$file lacks the keyword $missing\n";
        $faults++;
    }
    foreach (array_diff($keywords, $engine) as $surplus) {
        echo "$file has $surplus, which is no keyword\n";
        $faults++;
    }
}
exit($faults ? 1 : 0);
