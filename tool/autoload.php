<?php

// The classes of the tool. What is in TemplateTool\Check needs nothing else, also without a console.

spl_autoload_register(static function (string $class): void {
    if (str_starts_with($class, 'TemplateTool\\')) {
        $file = __DIR__ . '/src/' . strtr(substr($class, strlen('TemplateTool\\')), '\\', '/') . '.php';
        if (is_file($file)) {
            require $file;
        }
    }
});
