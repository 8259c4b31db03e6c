<?php

// Renders one page with one engine: that of the address in a web request, else the shop's.
$engine = getenv('BENCH_ENGINE');
$page = ($_SERVER['QUERY_STRING'] ?? '') ?: 'shop';
$build = getenv('BENCH_BUILD');
$prepare = (require __DIR__ . "/engines/$engine.php")("$build/pages", "$build/cache/$engine");
echo $prepare($page, require "$build/pages/$page/data.php")();
