<?php

/*
 * client.php URL REQUESTS SEED sends so many requests of all kinds, one after the other, and checks each reply.
 * It ends with status 1 at the first wrong one.
 */

// How many of a hundred requests are of this kind, and what the reply must match.
$memory = '/^\s*Fatal error: Allowed memory size of 33554432 bytes exhausted/';
$kinds = [
    'good' => [58, '~^<ul>\n<li>0: Lamp &lt;1&gt;, 1\.5 EUR</li>\n<li>1: Lamp &lt;2&gt;</li>.*<li>19: Lamp &lt;20&gt;</li>\n</ul>\n$~s'],
    'shop' => [2, '~^<!doctype html>.*<button value="\d+">Add to basket</button>.*</html>\s*$~s'],
    'nested' => [5, '/^\d{5} bytes$/'],
    'syntax' => [6, '/^\s*Warning: Unexpected closing optional tag in broken\.tpl in .*\nNULL$/s'],
    'missing' => [6, '/^left out\s*Warning: Could not open file missing\.tpl in .*\nNULL$/s'],
    'caught' => [4, '/^Caught: thrown$/'],
    'uncaught' => [4, '/^\s*Fatal error: Uncaught LogicException: thrown/'],
    'fatal' => [4, '/^\s*Fatal error: fatal in /'],
    'exit' => [4, '/^left$/'],
    'fiber' => [3, '/^suspended$/'],
    'memory' => [2, $memory],
    'memory in user code' => [2, $memory],
];

[, $url, $requests, $seed] = $argv;
mt_srand((int) $seed);
$mix = array_merge(...array_map(fn(string $kind): array => array_fill(0, $kinds[$kind][0], $kind), array_keys($kinds)));
$context = stream_context_create(['http' => ['timeout' => 30, 'ignore_errors' => true]]);

for ($i = 0; $i < $requests; $i++) {
    if ($i % count($mix) === 0) {
        shuffle($mix);
    }
    // PHP's cache of memory follows what the last requests took: the last ones are small.
    $kind = $i < $requests - 50 ? $mix[$i % count($mix)] : 'good';
    $reply = @file_get_contents("$url?kind=" . rawurlencode($kind), false, $context);
    if ($reply === false || !str_ends_with($http_response_header[0], ' 200 OK') || !preg_match($kinds[$kind][1], $reply)) {
        $reply = $reply === false ? 'none' : $http_response_header[0] . ' ' . substr(strtr(trim($reply), "\n", ' '), 0, 200);
        fwrite(STDERR, "a wrong reply to a request of kind \"$kind\": $reply\n");
        exit(1);
    }
}
