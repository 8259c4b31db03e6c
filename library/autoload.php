<?php

// For use without Composer: the classes of this library, and the checker, which finds the places of errors.

require_once dirname(__DIR__) . '/tool/autoload.php';

spl_autoload_register(static function (string $class): void {
    if (str_starts_with($class, 'Template\\')) {
        $file = __DIR__ . '/src/' . strtr(substr($class, strlen('Template\\')), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }
    }
});
