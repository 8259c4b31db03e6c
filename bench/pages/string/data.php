<?php

return [
    'shop' => 'North Harbour Books', 'name' => 'Zoë Brandt', 'order' => 'NH-2048-77', 'date' => '14 March',
    'street' => 'Quay Road 12', 'postcode' => '20457', 'city' => 'Hamburg', 'country' => 'Germany',
    'items' => 3, 'goods' => 61.85, 'shipping' => 4.9, 'discount' => 6.19, 'total' => 60.56, 'currency' => 'EUR',
    'carrier' => 'Blue Parcel & Sons', 'tracking' => '00340434161094015902', 'day' => 'Thursday',
    'phone' => '+49 40 5550 1234', 'mail' => 'orders@example.org', 'signature' => 'Marta Lindqvist',
];
