<?php

// Forty values, named as the partials use them.
$data = [];
foreach (['head', 'styles', 'logo', 'menu', 'search', 'path', 'banner', 'teaser', 'aside', 'news', 'social', 'footer'] as $part) {
    foreach (['title', 'url', 'text'] as $i => $name) {
        $data[$part . '_' . $name] = [ucfirst($part) . ' & more', "/$part/" . crc32($part), "A line of text for the $part of this page"][$i];
    }
}

return $data + ['lang' => 'en', 'title' => 'Thirteen files', 'user' => 'Zoë Brandt', 'visits' => 1204];
