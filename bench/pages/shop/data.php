<?php

$names = ['Walnut desk lamp', 'Linen armchair', 'Oak side table', 'Brass floor lamp', 'Wool throw "Fjord"', 'Cork stool', 'Glass & steel shelf', 'Paper lantern'];
$brands = ['Lindqvist', 'Haus & Hof', 'Atelier Möller', 'Norr'];
$products = [];
for ($i = 0; $i < 24; $i++) {
    $price = 19.9 + $i * 13.35;
    $products[] = [
        'id' => 1000 + $i,
        'url' => '/furniture/' . (1000 + $i) . '-' . strtolower(preg_replace('/\W+/', '-', $names[$i % 8])),
        'image' => '/img/products/' . (1000 + $i) . '.webp',
        'name' => $names[$i % 8] . ' no. ' . ($i + 1),
        'brand' => $brands[$i % 4],
        'text' => 'Made by hand in small numbers; oiled, not lacquered, and repaired free of charge for ten years. Delivered to your door, unpacked, and the box taken back.',
        'sku' => sprintf('NH-%05d', $i * 137), 'width' => 20 + $i * 3, 'height' => 45 + $i * 2, 'weight' => 1.2 + $i / 4,
        'origin' => 'Sweden & Denmark',
        'price' => round($price, 2),
        'before' => $i % 3 ? 0 : round($price * 1.25, 2),
        'badge' => $i % 5 ? '' : 'new',
        'rating' => 3.5 + $i % 4 * 0.5,
        'votes' => 7 + $i * 11,
        'stock' => ['in', 'low', 'out'][$i % 3],
    ];
}

return [
    'lang' => 'en', 'title' => 'Lamps & furniture', 'shop' => 'North Harbour', 'assets' => '/assets/3f9c',
    'user' => 'Zoë', 'cart' => 3, 'sum' => 184.7, 'found' => 24, 'year' => 2024, 'phone' => '+49 40 5550 1234',
    'menu' => array_map(fn ($t) => ['url' => '/' . strtolower($t), 'title' => $t], ['Lamps', 'Chairs', 'Tables', 'Shelves', 'Rugs', 'Garden', 'Offers']),
    'path' => [['url' => '/', 'title' => 'Home'], ['url' => '/living', 'title' => 'Living'], ['url' => '/living/lamps', 'title' => 'Lamps & furniture']],
    'facets' => [
        ['title' => 'Colour', 'values' => [['name' => 'amber', 'count' => 8], ['name' => 'ivory', 'count' => 5], ['name' => 'walnut', 'count' => 11]]],
        ['title' => 'Material', 'values' => [['name' => 'wood', 'count' => 12], ['name' => 'glass & steel', 'count' => 3], ['name' => 'wool', 'count' => 9]]],
    ],
    'products' => $products,
    'links' => array_map(fn ($t) => ['url' => '/help/' . md5($t), 'title' => $t], ['Shipping & returns', 'Payment', 'Repairs', 'Shops', 'Imprint', 'Privacy']),
];
