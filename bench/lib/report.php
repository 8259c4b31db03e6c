<?php

const TITLES = ['template' => 'template', 'php' => 'plain PHP', 'twig' => 'Twig', 'smarty' => 'Smarty', 'blade' => 'Blade', 'yardstick' => 'reading'];

/** A Markdown table that is also readable in a terminal. All columns but the first $texts ones hold figures. */
function table(array $header, array $rows, int $texts = 1): string
{
    $widths = array_map(null, ...array_map(fn ($row) => array_map('mb_strlen', array_values($row)), [$header, ...$rows]));
    $lines = '';
    foreach ([$header, null, ...$rows] as $row) {
        $cells = [];
        foreach ($widths as $i => $width) {
            $width = max($width);
            $text = (string) ($row[$i] ?? '');
            $gap = str_repeat(' ', $width - mb_strlen($text));
            $cells[] = $row === null ? str_repeat('-', $width - 1) . ($i < $texts ? '-' : ':') : ($i < $texts ? $text . $gap : $gap . $text);
        }
        $lines .= '| ' . implode(' | ', $cells) . " |\n";
    }
    return $lines;
}

/** A number with three significant digits or all digits of its integer part. */
function figure(float $value): string
{
    return number_format($value, $value >= 100 || $value == 0 ? 0 : max(0, 2 - (int) floor(log10($value))));
}

/** The whole report in Markdown; leaves out what this run did not measure. */
function report(array $results): string
{
    $text = '';
    if ($rows = targetRows($results)) {
        $text .= "\n## Targets\n\n" . table(['what', 'against', 'at most', 'measured', ''], $rows, 2);
    }
    foreach (['times', 'library', 'web', 'memory', 'growth', 'instructions'] as $section) {
        $text .= isset($results[$section]) ? "\n" . "report_$section"($results) : '';
    }
    return ltrim($text);
}

function report_times(array $results): string
{
    $rows = [];
    foreach ($results['times'] as $page => $times) {
        $ratio = fn (string $engine) => isset($times[$engine]) ? sprintf('%.3f', $times['template'] / $times[$engine]) : '';
        $rows[] = [$page, number_format($results['bytes'][$page]),
            ...array_map(fn ($engine) => isset($times[$engine]) ? figure($times[$engine] / 1000) : '', array_keys(TITLES)), $ratio('php'), $ratio('twig')];
    }
    return "## Time of a call\n\nMicroseconds, the median of $results[rounds] samples. \"Reading\": the page's template files opened and read through PHP's "
        . "stream layer and no more (literal: in one step, and searched for braces once). Plain PHP has no string mode: its page is a file.\n\n"
        . "On a page of a few lines no engine that reads its file can be as fast as opcache: opening and reading take the kernel "
        . "some microseconds, and compiled code waits in memory and isn't asked whether its file has changed. The whole request "
        . "below is what a visitor waits for: there each engine also pays for what it has to set up first.\n\n"
        . table(['page', 'bytes', ...array_values(TITLES), '/ PHP', '/ Twig'], $rows);
}

function report_library(array $results): string
{
    $cells = array_map(fn ($key) => figure($results['library'][$key] / 1000), ['function', 'render', 'more']);
    return "## The PHP library\n\nMicroseconds, medians of pairs: a call of `template()` for the page hello, and of `Template\\Engine::render()`, which sets "
        . "an include path and an error handler of its own for the call.\n\n"
        . table(['page', 'template()', 'Engine::render()', 'more in a pair'], [['hello', ...$cells]]);
}

function report_web(array $results): string
{
    $titles = array_map(fn ($engine) => TITLES[$engine], ENGINES);
    $row = fn (string $title, array $times, array $columns) => [$title, ...array_map(fn ($engine) => figure($times[$engine] / 1000), $columns)];
    $rows = fn (array $pages, array $columns) => array_map(fn ($page) => $row($page, $pages[$page], $columns), array_keys($pages));
    $all = [...ENGINES, 'fixed', 'nothing'];
    return "## Whole requests\n\nMicroseconds that a request to PHP's built-in server takes, opcache warm, beyond one that reads the finished page from a "
        . "file and prints it.\n\n" . table(['page', ...$titles], $rows($results['beyond'], ENGINES))
        . "\n## Whole requests and fresh processes\n\nThe same in full; the last row is a process that renders shop once, without opcache. \"Fixed "
        . "text\": the finished page is read from a file and printed. \"Nothing\": a script that prints an empty text.\n\n"
        . table(['', ...$titles, 'fixed text', 'nothing'], [
            ...$rows($results['web'], $all), ...(isset($results['cold']) ? [$row('fresh process', $results['cold'], $all)] : []),
        ]);
}

function report_memory(array $results): string
{
    $rows = [];
    foreach ($results['memory'] as $engine => $memory) {
        $rows[] = [TITLES[$engine], ...array_map(fn ($key) => sprintf('%.1f', $memory[$key] / 1e6), ['bytes', 'php', 'process']),
            sprintf('%.3f', $memory['peak'] / $memory['bytes'])];
    }
    return "## Peak memory\n\nMegabytes, for a table of 200,000 rows: by how much the interpreter's memory and the process grow at the peak.\n\n"
        . table(['engine', 'result', 'interpreter', 'process', 'the larger / result'], $rows) . report_large($results['large']);
}

function report_large(array $large): string
{
    $rows = [];
    foreach ($large as $name => ['0' => $usual, '1' => $huge]) {
        $pages = $usual['bytes'] / 4096;
        $rows[] = [$name, sprintf('%.1f', $usual['bytes'] / 1e6), figure($usual['time'] / 1e6), sprintf('%.2f', $usual['faults'] / $pages),
            figure($huge['time'] / 1e6), sprintf('%.2f', $huge['faults'] / $pages), sprintf('%.2f', $huge['time'] / $usual['time'])];
    }
    return "\n## Large results\n\nMilliseconds of a call, and page faults for each 4 KB of the result (1 is the least without huge pages: what was given "
        . "back comes anew from the kernel). \"Huge\": with `USE_ZEND_ALLOC_HUGE_PAGES=1` in the environment.\n\n"
        . table(['result', 'megabytes', 'time', 'faults', 'huge: time', 'huge: faults', 'huge / usual time'], $rows);
}

function report_growth(array $results): string
{
    $rows = [];
    foreach ($results['growth'] as $series => $times) {
        $cells = [];
        foreach ($times as $size => $time) {
            $cells[] = number_format($size) . ': ' . figure($time);
        }
        // The first sizes carry the fixed cost of a call, so the least is taken as what a unit costs.
        $rise = end($times) / min($times);
        $rows[] = [$series, implode(', ', $cells), sprintf('%.1f', $rise),
            isset($results['instructions']) ? sprintf('%.2f', $results['instructions']['growth'][$series]) : ''];
    }
    return "## Growth\n\nNanoseconds per unit at each size, and the last figure relative to the least: about 1 when the time is linear, "
        . "more where caches and fresh memory from the kernel tell. \"Instructions\": what a unit takes when there are twice as many, relative to "
        . "what it took.\n\n"
        . table(['what grows', 'size: nanoseconds per unit', 'last / least', 'instructions'], $rows, 2);
}

function report_instructions(array $results): string
{
    $rows = [];
    $counts = $results['instructions'];
    foreach ($counts['template'] as $page => $count) {
        $php = $counts['php'][$page] ?? null;
        $scalar = $counts['without vectors'][$page];
        $rows[] = ["page $page", number_format($count), $php ? number_format($php) : '', $php ? sprintf('%.3f', $count / $php) : '',
            number_format($scalar), sprintf('%.2f', $scalar / $count)];
    }
    foreach ($counts['unit'] as $name => $count) {
        $rows[] = [$name, figure($count), '', '', '', ''];
    }
    return "## Instructions\n\nCounted by callgrind, for a call of a page or for one unit. \"Without vectors\": built as for a processor that has no vector "
        . "instructions.\n\n" . table(['', 'template', 'plain PHP', '/ PHP', 'without vectors', '/ with'], $rows);
}

/** What the figures were taken with. */
function machine(): string
{
    preg_match('/^model name\s*:\s*(.+)$/m', file_get_contents('/proc/cpuinfo'), $processor);
    $versions = [];
    foreach (['php-twig' => 'Twig', 'smarty4' => 'Smarty', 'php-illuminate-view' => 'Blade'] as $package => $title) {
        $versions[] = $title . ' ' . preg_replace('/[+-].*/', '', trim((string) shell_exec("dpkg-query -W -f '\${Version}' $package")));
    }
    return trim($processor[1] ?? php_uname('m')) . ', PHP ' . PHP_VERSION . ' with opcache, ' . implode(', ', $versions);
}
