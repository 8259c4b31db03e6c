<?php

// One engine in a process of its own. Reads "PAGE CALLS FILE" lines, renders the page that
// often, writes the last text to FILE when there is one and answers with the nanoseconds.
[, $engine, $build] = $argv;
require __DIR__ . '/lib/pages.php';
$prepare = (require __DIR__ . "/engines/$engine.php")("$build/pages", "$build/cache/$engine");
$renderers = [];
while (($line = fgets(STDIN)) !== false) {
    [$page, $calls, $file] = explode(' ', rtrim($line, "\n"));
    $render = $renderers[$page] ??= $prepare($page, pageData("$build/pages", $page));
    $start = hrtime(true);
    for ($i = 0; $i < $calls; $i++) {
        $text = $render();
    }
    $time = hrtime(true) - $start;
    if ($file !== '') {
        file_put_contents($file, (string) $text);
    }
    echo "$time\n";
}
