<?php

// Renders one page with one engine, as a web request or as a fresh process would.
$engine = getenv('BENCH_ENGINE');
$page = getenv('BENCH_PAGE');
$build = getenv('BENCH_BUILD');
$prepare = (require __DIR__ . "/engines/$engine.php")("$build/pages", "$build/cache/$engine");
echo $prepare($page, require "$build/pages/$page/data.php")();
