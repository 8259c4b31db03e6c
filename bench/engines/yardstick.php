<?php

// No engine: opens and reads the files that a page's templates are made of.
return function (string $pages): Closure {
    set_include_path($pages);
    return function (string $page, array $data) use ($pages): Closure {
        $names = ["$pages/$page/page.tpl"];
        foreach (glob("$pages/$page/*.tpl") as $file) {
            if (basename($file) !== 'page.tpl') {
                $names[] = "$page/" . basename($file);
            }
        }
        $scan = $page === 'literal';
        return fn () => yardstick_read($names, $scan);
    };
};
