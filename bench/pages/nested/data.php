<?php

$groups = [];
for ($g = 1; $g <= 50; $g++) {
    $items = [];
    for ($i = 1; $i <= 20; $i++) {
        $items['item-' . $i] = [
            'name' => "Lamp $g/$i",
            'price' => $g * 10 + $i,
            'new' => $i % 5 === 0,
            'state' => $i % 3 ? 'ready' : 'sold',
        ];
    }
    $groups['room-' . $g] = [
        'title' => 'Lamps & lights, room ' . $g,
        'colour' => $g % 2 ? 'amber' : 'ivory',
        'note' => $g % 4 ? '' : 'Closed for the day',
        'items' => $items,
    ];
}

return ['title' => 'Rooms', 'groups' => $groups];
