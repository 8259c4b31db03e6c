--TEST--
The manual: every example of README.md and docs/ gives what the page shows
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/docs.inc';

$names = array_map(fn($path) => 'docs/' . basename($path), glob(manual() . '/docs/*.md'));
// Needs libraries; docs_frameworks.phpt runs it.
pages('README.md', ...array_diff($names, ['docs/frameworks.md']));
?>
--EXPECT--
done
