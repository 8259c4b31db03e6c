--TEST--
One version: the module, the changelog and the package agree
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/docs.inc';

$version = phpversion('template');
$places = [
    'CHANGELOG.md' => '/^## \[?(\d[^\]\s]*)/m',
    'debian/changelog' => '/^php-template \((.*)-\d+\) /',
    'docs/template.1' => '/^\.TH .*"template ([^"]+)"/m',
];
foreach ($places as $file => $place) {
    if (!preg_match($place, file_get_contents(manual() . "/$file"), $found) || $found[1] !== $version) {
        printf("%s has version %s, the module %s\n", $file, $found[1] ?? 'unknown', $version);
    }
}
echo "done\n";
?>
--EXPECT--
done
