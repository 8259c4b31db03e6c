--TEST--
The manual: every example of docs/frameworks.md gives what the page shows
--EXTENSIONS--
template
ctype
mbstring
--SKIPIF--
<?php
foreach ([
    'Symfony/Component/HttpKernel/autoload.php' => 'php-symfony-http-kernel',
    'Symfony/Component/DependencyInjection/autoload.php' => 'php-symfony-dependency-injection',
    'Symfony/Component/Config/autoload.php' => 'php-symfony-config',
    'Illuminate/View/autoload.php' => 'php-illuminate-view',
    'Slim/autoload.php' => 'php-slim',
    'Nyholm/Psr7/autoload.php' => 'php-nyholm-psr7',
] as $file => $package) {
    stream_resolve_include_path($file) || exit("skip needs Debian's $package");
}
?>
--FILE--
<?php
// Frameworks that are older than this PHP use what it deprecates.
error_reporting(E_ALL & ~E_DEPRECATED);
require __DIR__ . '/docs.inc';
require manual() . '/library/autoload.php';

pages('docs/frameworks.md');
?>
--EXPECT--
done
