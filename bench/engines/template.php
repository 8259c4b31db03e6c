<?php

// This extension: nothing to set up, nothing kept between calls.
return function (string $pages): Closure {
    set_include_path($pages);
    return function (string $page, array $data) use ($pages): Closure {
        $file = "$pages/$page/page.tpl";
        if ($page !== 'string') {
            return fn () => template($file, $data);
        }
        $text = file_get_contents($file);
        return fn () => template($text, $data, true);
    };
};
