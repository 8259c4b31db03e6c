--TEST--
The fuzzer's corpus: what the fuzzer checks on each input holds for those it has learnt
--INI--
memory_limit=1G
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/../fuzz/input.php';

$files = glob(__DIR__ . '/../fuzz/corpus/*');
foreach ($files as $file) {
    $wrong = check(file_get_contents($file));
    if ($wrong !== null) {
        printf("%s: %s\n", basename($file), $wrong);
    }
}
echo count($files) >= 46 ? 'all checked' : 'inputs are missing', "\n";
?>
--EXPECT--
all checked
