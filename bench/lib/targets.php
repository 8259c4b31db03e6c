<?php

/** What the engine is measured against: page, yardstick, limit and the two figures of the results to divide. */

const TARGETS = [
    ['shop', 'plain PHP', 0.40, 'times.shop.template', 'times.shop.php'],
    ['shop', 'Twig', 0.105, 'times.shop.template', 'times.shop.twig'],
    ['table', 'plain PHP', 0.074, 'times.table.template', 'times.table.php'],
    ['table', 'Twig', 0.032, 'times.table.template', 'times.table.twig'],
    ['nested', 'plain PHP', 0.115, 'times.nested.template', 'times.nested.php'],
    ['nested', 'Twig', 0.038, 'times.nested.template', 'times.nested.twig'],
    ['string', 'Twig', 0.14, 'times.string.template', 'times.string.twig'],
    ['hello', 'opening and reading its file', 0.75, 'times.hello.template', 'times.hello.yardstick'],
    ['includes', 'opening and reading its 13 files', 0.80, 'times.includes.template', 'times.includes.yardstick'],
    ['literal', 'reading its file and one search for braces', 1.4, 'times.literal.template', 'times.literal.yardstick'],
    ['what Engine::render adds on hello', '2 µs', 1.0, 'library.more', 'library.most'],
    ['whole request of shop, beyond printing the page', 'plain PHP', 0.72, 'beyond.shop.template', 'beyond.shop.php'],
    ['whole request of shop, beyond printing the page', 'Twig', 0.16, 'beyond.shop.template', 'beyond.shop.twig'],
    ['instructions of table', 'plain PHP', 0.104, 'instructions.template.table', 'instructions.php.table'],
    ['instructions of shop', 'plain PHP', 0.20, 'instructions.template.shop', 'instructions.php.shop'],
    ['peak memory of a large result', "the result's size", 1.1, 'memory.template.peak', 'memory.template.bytes'],
];

/** How many times as many instructions a page may take on a processor without vectors. */
const WITHOUT_VECTORS = 1.3;

/** The targets as table rows, without those whose figures were not taken in this run. */
function targetRows(array $results): array
{
    $figure = fn (string $path) => array_reduce(explode('.', $path), fn ($value, $key) => $value[$key] ?? null, $results);
    $rows = [];
    foreach (TARGETS as [$what, $against, $limit, $own, $other]) {
        if ($figure($own) && $figure($other)) {
            $rows[] = targetRow($what, $against, $limit, $figure($own) / $figure($other));
        }
    }
    foreach ($results['instructions']['without vectors'] ?? [] as $page => $count) {
        $rows[] = targetRow("instructions of $page without vectors", 'those with vectors', WITHOUT_VECTORS, $count / $results['instructions']['template'][$page]);
    }
    return $rows;
}

function targetRow(string $what, string $against, float $limit, float $ratio): array
{
    return [$what, $against, $limit, sprintf('%.3f', $ratio), $ratio <= $limit ? 'reached' : 'not reached'];
}
