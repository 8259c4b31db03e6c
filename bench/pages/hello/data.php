<?php

return [
    'title' => 'Your order & delivery',
    'name' => 'Zoë Brandt',
    'orders' => 3,
    'url' => '/account/orders',
    'shop' => 'North Harbour Books',
];
