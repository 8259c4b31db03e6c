<?php

/*
 * The data of the example page, read from an embedded SQLite database.
 * Integers, floats and strings arrive with the types of their columns.
 */

$db = new PDO('sqlite::memory:', options: [PDO::ATTR_DEFAULT_FETCH_MODE => PDO::FETCH_ASSOC]);
$db->exec(file_get_contents(__DIR__ . '/data.sql'));

// For a template NULL is a value like any other, which prints as nothing. A column left out is
// a missing value, for which the next alternative or the fallback text steps in.
$rows = static fn (string $sql): array => array_map(
    static fn (array $row): array => array_filter($row, static fn ($value) => $value !== null),
    $db->query($sql)->fetchAll()
);
$pairs = static fn (string $sql): array => $db->query($sql)->fetchAll(PDO::FETCH_KEY_PAIR);
$grouped = static fn (string $sql): array => $db->query($sql)->fetchAll(PDO::FETCH_GROUP);

$shop = $pairs('SELECT name, value FROM setting');
$currencies = $pairs('SELECT code, symbol FROM currency');

$products = $rows(
    "SELECT *, printf('%.2f', cents / 100.0) AS price,
            CASE WHEN old_cents > cents THEN printf('%.2f', old_cents / 100.0) END AS old_price,
            CASE WHEN old_cents > cents THEN 100 - cents * 100 / old_cents END AS discount,
            stock BETWEEN 2 AND 5 AS few
     FROM product ORDER BY id"
);

$facets = [];
$choices = $grouped(
    'SELECT v.facet, v.value, v.label, v.swatch, v.chosen, count(p.product) AS count
     FROM facet_value v JOIN product_facet p USING (facet, value)
     GROUP BY v.facet, v.position ORDER BY v.position'
);
foreach ($rows('SELECT * FROM facet ORDER BY position') as $facet) {
    $facet['choices'] = array_map(
        static fn (array $choice): array => array_filter($choice, static fn ($value) => $value !== null),
        $choices[$facet['key']]
    );
    $facets[$facet['key']] = $facet;
}

$category = $rows('SELECT * FROM category WHERE id = 20')[0];

return [
    'shop' => $shop,
    'search' => ['phrase' => ''],
    'currency' => $currencies[$shop['currency']],
    'currencies' => $currencies,
    'navigation' => $rows('SELECT id, name, id = 2 AS current FROM category WHERE parent_id = 1 ORDER BY id'),
    'breadcrumbs' => $rows(
        'WITH RECURSIVE trail (id, parent_id, name, depth) AS (
             SELECT id, parent_id, name, 0 FROM category WHERE id = 20
             UNION ALL
             SELECT c.id, c.parent_id, c.name, depth + 1 FROM category c JOIN trail ON c.id = trail.parent_id
         ) SELECT id, name FROM trail ORDER BY depth DESC'
    ),
    'category' => $category,
    'facets' => $facets,
    'sorting' => $pairs('SELECT key, label FROM sorting'),
    'shapes' => $grouped('SELECT key, fill, d FROM shape ORDER BY key, part'),
    // A list of rows with facts about the list beside it: loops walk "num", references see the rest.
    'products' => [
        'num' => $products,
        'first' => 1,
        'last' => count($products),
        'total' => $category['listed'],
    ],
    'featured' => $rows('SELECT shape, shade, body, max(rating) AS best FROM product GROUP BY shape ORDER BY best DESC LIMIT 3'),
    'pages' => array_fill_keys(range(1, intdiv($category['listed'] + 23, 24)), '/c/20'),
    'viewed' => $rows('SELECT p.* FROM viewed v JOIN product p ON p.id = v.product ORDER BY v.position'),
    'newsletter' => ['visible' => true, 'title' => 'A letter by lamplight', 'frequency' => 'once a month'],
    'footer' => $grouped('SELECT title, label, url FROM footer_link'),
    'basket' => ['count' => 2],
];
