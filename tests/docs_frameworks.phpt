--TEST--
The manual: every example of docs/frameworks.md gives what the page shows
--EXTENSIONS--
template
mbstring
--SKIPIF--
<?php
foreach ([
    'Symfony/Component/HttpFoundation/autoload.php' => 'php-symfony-http-foundation',
    'Illuminate/View/autoload.php' => 'php-illuminate-view',
    'Nyholm/Psr7/autoload.php' => 'php-nyholm-psr7',
] as $file => $package) {
    stream_resolve_include_path($file) || exit("skip needs Debian's $package");
}
?>
--FILE--
<?php
require __DIR__ . '/docs.inc';

pages('docs/frameworks.md');
?>
--EXPECT--
done
