<?php

$rows = [];
for ($i = 1; $i <= 1000; $i++) {
    $rows[] = [
        'id' => $i,
        'sku' => sprintf('NH-%05d', $i * 37),
        'name' => 'Folding chair no. ' . $i,
        'category' => $i % 10 ? 'Garden furniture' : 'Garden & balcony',
        'supplier' => 'Lindqvist Trading Company',
        'city' => 'Göteborg',
        'note' => $i % 20 ? 'delivered in six to eight days' : 'up to 2 < 3 weeks, "as is"',
        'price' => round(19.9 + $i * 1.37, 2),
        'weight' => $i / 8,
        'stock' => $i * 7 % 250,
    ];
}

return ['title' => 'Stock list', 'rows' => $rows];
