<?php

// Twig: compiled templates in a cache folder, never checked for changes.
return function (string $pages, string $cache): Closure {
    require_once '/usr/share/php/Twig/autoload.php';
    $twig = new Twig\Environment(new Twig\Loader\FilesystemLoader($pages), [
        'cache' => $cache, 'auto_reload' => false, 'autoescape' => false,
    ]);
    return function (string $page, array $data) use ($pages, $twig): Closure {
        if ($page !== 'string') {
            return fn () => $twig->render("$page/page.twig", $data);
        }
        $text = file_get_contents("$pages/$page/page.twig");
        return fn () => $twig->createTemplate($text)->render($data);
    };
};
