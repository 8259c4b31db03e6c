<?php

// Plain PHP: the page is a PHP file, compiled once and kept by opcache.
return function (string $pages): Closure {
    function render(string $file, array $data): string
    {
        extract($data);
        ob_start();
        include $file;
        return ob_get_clean();
    }
    return function (string $page, array $data) use ($pages): Closure {
        $file = "$pages/$page/page.php";
        return fn () => render($file, $data);
    };
};
