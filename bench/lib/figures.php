<?php

/*
 * The figures of the manual. One that comes from the benchmark stands between two comments, the first of which names the
 * cell of bench/RESULTS.md: <!-- figure: Section, row, column -->12<!-- end -->. The row is that of the first cell, or
 * "first cell / second cell" in a table of targets.
 */

/** The cells of bench/RESULTS.md by "Section, row, column". */
function resultCells(string $results): array
{
    $cells = [];
    $section = '';
    $header = [];
    foreach (explode("\n", $results) as $line) {
        if (str_starts_with($line, '## ')) {
            [$section, $header] = [substr($line, 3), []];
        } elseif (str_starts_with($line, '| ') && !str_starts_with($line, '| --')) {
            $row = array_map('trim', explode('|', trim($line, '|')));
            $header = $header ?: $row;
            $name = $section === 'Targets' ? "$row[0] / $row[1]" : $row[0];
            foreach ($row as $i => $cell) {
                $cells["$section, $name, $header[$i]"] = $cell;
            }
        }
    }
    return $cells;
}

/** The text with each figure as the results have it. $faults gets a line for each that differed, after the number of its line. */
function withFigures(string $text, array $cells, array &$faults): string
{
    $pattern = '~<!-- figure: (.+?) -->(.*?)<!-- end -->~s';
    return preg_replace_callback($pattern, function (array $match) use ($text, $cells, &$faults): string {
        [[$all, $offset], [$key], [$shown]] = $match;
        $line = substr_count($text, "\n", 0, $offset) + 1;
        if (!isset($cells[$key])) {
            $faults[] = "$line: bench/RESULTS.md has no \"$key\"";
            return $all;
        }
        if ($shown !== $cells[$key]) {
            $faults[] = "$line: \"$key\" is $cells[$key] in bench/RESULTS.md, not $shown";
        }
        return "<!-- figure: $key -->$cells[$key]<!-- end -->";
    }, $text, flags: PREG_OFFSET_CAPTURE);
}

/** The landing page with the chart's size as it is. */
function withChartSize(string $text, string $chart, array &$faults): string
{
    preg_match('/width="(\d+)" height="(\d+)"/', $chart, $size);
    return preg_replace_callback('/(results\.svg".*?)width="(\d+)" height="(\d+)"/', function (array $match) use ($size, &$faults): string {
        if ([$match[2], $match[3]] !== [$size[1], $size[2]]) {
            $faults[] = "1: the chart measures $size[1] x $size[2], not $match[2] x $match[3]";
        }
        return "$match[1]width=\"$size[1]\" height=\"$size[2]\"";
    }, $text);
}

/** Figures of speed that stand outside of such comments: a line for each. */
function unmarkedFigures(string $text): array
{
    $faults = [];
    // Code, examples and figures with a source are left out, lines stay where they are.
    $blank = fn (array $match) => preg_replace('/[^\n]/', ' ', $match[0]);
    $text = preg_replace_callback('~^(```+).*?^\1|<!-- figure: .*?<!-- end -->|`[^`\n]*`~ms', $blank, $text);
    $number = '(?:\d[\d.,]*|half|twice|a third|a quarter|a tenth|two|three|four|five|ten)';
    $speed = "~$number\s?(?:µs|ns|ms|nanoseconds?|microseconds?|milliseconds?|[KMG]B/s|pages (?:a|per) second)(?!\w)"
        . "|$number(?:\s?%|\s?×|\stimes)?\s+(?:as\s+)?(?:fast|slow|quick)(?:er)?\b|$number\s+(?:of\s+)?the\s+time\b~iu";
    preg_match_all($speed, $text, $found, PREG_OFFSET_CAPTURE);
    foreach ($found[0] as [$figure, $offset]) {
        $faults[] = substr_count($text, "\n", 0, $offset) + 1 . ': "' . preg_replace('/\s+/', ' ', $figure)
            . '" has no source: <!-- figure: Section, row, column -->12<!-- end --> takes it from bench/RESULTS.md';
    }
    return $faults;
}

/** The files that may speak of speed. */
function figureFiles(): array
{
    $root = dirname(__DIR__, 2);
    return [...array_map(fn ($name) => "$root/$name", ['README.md', 'SECURITY.md', 'CHANGELOG.md', 'CONTRIBUTING.md', 'site/README.md']),
        ...glob("$root/docs/*.md"), ...glob("$root/site/pages/*.njk"), ...glob("$root/editors/*/README.md"), ...glob("$root/library/*.md")];
}

/** A line for each figure that isn't the results'. With $write those that have a source are mended, and not told. */
function figureFaults(bool $write): array
{
    $root = dirname(__DIR__, 2);
    $cells = resultCells(file_get_contents("$root/bench/RESULTS.md"));
    $chart = file_get_contents("$root/bench/results.svg");
    $all = [];
    foreach (figureFiles() as $file) {
        $text = file_get_contents($file);
        $faults = [];
        $mended = withChartSize(withFigures($text, $cells, $faults), $chart, $faults);
        if ($write && $mended !== $text) {
            file_put_contents($file, $mended);
            $faults = [];
            withFigures($mended, $cells, $faults);
        }
        foreach ([...$faults, ...unmarkedFigures($text)] as $fault) {
            $all[] = substr($file, strlen($root) + 1) . ":$fault";
        }
    }
    return $all;
}
