<?php

// Prints the man page.

require __DIR__ . '/autoload.php';

TemplateTool\Console\Start::prepare(dirname(__DIR__));
echo TemplateTool\Console\ManPage::make();
