<?php

/** What the engine is measured against: page, yardstick, limit and the two figures of the results to divide. */

const TARGETS = [
    ['shop', 'plain PHP', 0.50, 'times.shop.template', 'times.shop.php'],
    ['shop', 'Twig', 0.16, 'times.shop.template', 'times.shop.twig'],
    ['table', 'plain PHP', 0.13, 'times.table.template', 'times.table.php'],
    ['table', 'Twig', 0.065, 'times.table.template', 'times.table.twig'],
    ['nested', 'plain PHP', 0.18, 'times.nested.template', 'times.nested.php'],
    ['nested', 'Twig', 0.07, 'times.nested.template', 'times.nested.twig'],
    ['string', 'Twig', 0.20, 'times.string.template', 'times.string.twig'],
    ['hello', 'opening and reading its file', 1.10, 'times.hello.template', 'times.hello.yardstick'],
    ['includes', 'opening and reading its files', 1.10, 'times.includes.template', 'times.includes.yardstick'],
    ['literal', 'reading its file and one scan for braces', 2.0, 'times.literal.template', 'times.literal.yardstick'],
    ['what Engine::render adds on hello', '2 µs', 1.0, 'library.more', 'library.most'],
    ['whole request of shop', 'plain PHP', 0.80, 'web.template', 'web.php'],
    ['whole request of shop', 'Twig', 0.20, 'web.template', 'web.twig'],
    ['instructions of table', 'plain PHP', 0.17, 'instructions.template.table', 'instructions.php.table'],
    ['instructions of shop', 'plain PHP', 0.30, 'instructions.template.shop', 'instructions.php.shop'],
    ['peak memory of a large result', "the result's size", 1.1, 'memory.template.peak', 'memory.template.bytes'],
];

/** The targets as table rows, without those whose figures were not taken in this run. */
function targetRows(array $results): array
{
    $figure = fn (string $path) => array_reduce(explode('.', $path), fn ($value, $key) => $value[$key] ?? null, $results);
    $rows = [];
    foreach (TARGETS as [$what, $against, $limit, $own, $other]) {
        if ($figure($own) && $figure($other)) {
            $ratio = $figure($own) / $figure($other);
            $rows[] = [$what, $against, $limit, sprintf('%.3f', $ratio), $ratio <= $limit ? 'reached' : 'not reached'];
        }
    }
    return $rows;
}
