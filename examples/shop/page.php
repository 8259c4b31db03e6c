<?php

// Included files are looked for in the include path, so that is where the templates go.
set_include_path(__DIR__ . '/templates');

echo template('category.tpl', require __DIR__ . '/data.php');
