<?php

use Illuminate\Events\Dispatcher;
use Illuminate\Filesystem\Filesystem;
use Illuminate\View;

// Blade without the rest of Laravel: compiled views in a folder. It has no switch
// for the comparison of the two files' times, so that is part of every call.
return function (string $pages, string $cache): Closure {
    require_once '/usr/share/php/Illuminate/View/autoload.php';
    $files = new Filesystem();
    $engines = new View\Engines\EngineResolver();
    $compiler = new View\Compilers\BladeCompiler($files, $cache);
    $engines->register('blade', fn () => new View\Engines\CompilerEngine($compiler, $files));
    $views = new View\Factory($engines, new View\FileViewFinder($files, [$pages]), new Dispatcher());
    return function (string $page, array $data) use ($pages, $cache, $views): Closure {
        if ($page !== 'string') {
            return fn () => $views->make("$page.page", $data)->render();
        }
        // What Laravel does with a view given as text: a file named by its hash.
        $text = file_get_contents("$pages/$page/page.blade.php");
        return function () use ($text, $cache, $views, $data) {
            $file = $cache . '/' . sha1($text) . '.blade.php';
            if (!is_file($file)) {
                file_put_contents($file, $text);
                touch($file, 1);
            }
            return $views->file($file, $data)->render();
        };
    };
};
