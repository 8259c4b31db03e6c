--TEST--
Large templates and data: the right text or a clear error, in time that grows with the size and no faster
--INI--
memory_limit=-1
--EXTENSIONS--
template
--FILE--
<?php
// With full sizes, and the time of each: php -d extension=template tests/hostile_sizes.phpt full
require __DIR__ . '/table.inc';

$full = ($argv[1] ?? '') === 'full';
[$divisor, $limit] = watcher() ? [500, 300] : [20, 5];
$too_deep = 'Blocks nested too deeply in ';

/** Makes the case at a size and renders it: seconds, and null when the outcome is the expected one. */
$measure = function (Closure $case, int $size, bool $as_file): array {
    [$template, $data, $expected, $error] = $case($size) + [3 => null];
    if ($as_file) {
        put(['main.tpl' => $template]);
    }
    $messages = [];
    set_error_handler(function (int $level, string $message) use (&$messages): bool {
        return (bool) $messages[] = $message;
    });
    $start = hrtime(true);
    $text = $as_file ? template('main.tpl', $data) : template($template, $data, true);
    $seconds = (hrtime(true) - $start) / 1e9;
    restore_error_handler();
    $right = $text === null ? isset($messages[0]) && str_starts_with($messages[0], $error ?? "\n") : $text === $expected && !$messages;
    return [$seconds, $right ? null : substr($messages[0] ?? "a text of " . strlen($text) . ' bytes', 0, 80)];
};

$escaped = fn(string $tag, string $bytes, string $expected): array => [100_000_000 / strlen($bytes), fn(int $n) =>
    ["{{$tag} v}{dynamic l}{{$tag} *}{/dynamic}", ['v' => $v = str_repeat($bytes, $n), 'l' => [$v]], str_repeat($expected, 2 * $n)]];
$cases = [
    'nested optional blocks' => [1_000_000, fn(int $n) => [str_repeat('{optional v}', $n) . str_repeat('{/optional}', $n), ['v' => 1], '', $too_deep]],
    'nested hidden blocks' => [1_000_000, fn(int $n) => [str_repeat('{optional x}', $n) . str_repeat('{/optional}', $n), [], '', $too_deep]],
    'nested loops' => [1_000_000, fn(int $n) => [str_repeat('{dynamic l}', $n) . str_repeat('{/dynamic}', $n), ['l' => [1]], '', $too_deep]],
    'blocks side by side' => [1_000_000, fn(int $n) => [str_repeat('{optional v}a{/optional}{!optional v}{v}{/optional}{dynamic l}{*}{/dynamic}', $n), ['v' => 1, 'l' => [1]], str_repeat('a1', $n)]],
    'names of loops' => [1_000_000, fn(int $n) => [implode('', array_map(fn($i) => "{dynamic n$i,l}{n$i::*}{/dynamic}", range(1, $n))), ['l' => [1]], str_repeat('1', $n)]],
    'a long tag' => [100_000_000, fn(int $n) => [$tag = '{' . str_repeat('a', $n) . '}', [], $tag]],
    'a long tag with blanks' => [100_000_000, fn(int $n) => ['{v' . str_repeat(' ', $n) . '}', ['v' => 'V'], 'V']],
    'a long tag in a loop' => [100_000_000, fn(int $n) => ['{dynamic l}{*::' . str_repeat('a', $n) . " 'x'}{/dynamic}", ['l' => [1]], 'x']],
    'a long default text' => [100_000_000, fn(int $n) => ["{v '" . str_repeat("'", $n) . "'}", [], str_repeat("'", $n)]],
    'a long optional tag' => [100_000_000, fn(int $n) => ["{optional v '" . str_repeat('1', $n) . "'}x{/optional}", ['v' => 1], '']],
    'a brace in a tag' => [100_000_000, fn(int $n) => ['{a{' . str_repeat('}', $n), [], '{a' . str_repeat('{', $n + 1) . '}']],
    'an error in a long tag' => [100_000_000, fn(int $n) => [($tag = '{' . str_repeat('a', $n)) . "'}", [], null, "Variable block bad parameter '" . substr($tag, 1) . "'': ' is forbidden"]],
    'a reference of many components' => [1_000_000, fn(int $n) => [$tag = '{' . str_repeat('a::', $n) . 'a}', ['a' => ['a' => 1]], $tag]],
    'the same in a loop' => [1_000_000, fn(int $n) => ['{dynamic l}{*' . str_repeat('::a', $n) . " 'x'}{/dynamic}", ['l' => [['a' => ['a' => 1]]]], 'x']],
    'many alternatives' => [10_000_000, fn(int $n) => ['{' . str_repeat('a ', $n) . 'v}', ['v' => 'V'], 'V']],
    'many alternatives in a loop' => [10_000_000, fn(int $n) => ['{dynamic l}{' . str_repeat('*::a ', $n) . '*}{/dynamic}', ['l' => ['V']], 'V']],
    'many tags' => [10_000_000, fn(int $n) => [str_repeat('{v}', $n), ['v' => 'V'], str_repeat('V', $n)]],
    'many tags that find nothing' => [10_000_000, fn(int $n) => [$text = str_repeat('{x}', $n), [], $text]],
    'many tags in a loop' => [10_000_000, fn(int $n) => ['{dynamic l}' . str_repeat('{*}', $n) . '{/dynamic}', ['l' => ['V']], str_repeat('V', $n)]],
    'many rows' => [10_000_000, fn(int $n) => ['{dynamic l}{*}{/dynamic}', ['l' => array_fill(0, $n, 'V')], str_repeat('V', $n)]],
    'many keys' => [1_000_000, fn(int $n) => ['{dynamic l}{[*]}{/dynamic}', ['l' => array_flip($keys = array_map(fn($i) => "key$i", range(1, $n)))], implode('', $keys)]],
    'many properties' => [1_000_000, fn(int $n) => ['{dynamic l}{dynamic *}{*}{/dynamic}{/dynamic}', ['l' => [['num' => (object) array_map(fn($i) => 'V', range(1, $n))]]], str_repeat('V', $n)]],
    'doubled braces' => [50_000_000, fn(int $n) => [str_repeat('{{}}', $n), [], str_repeat('{}', $n)]],
    'single braces' => [50_000_000, fn(int $n) => [$text = str_repeat('{ } ', $n), [], $text]],
    'a long text' => [100_000_000, fn(int $n) => [$text = str_repeat('a', $n), [], $text]],
    'a long value' => [100_000_000, fn(int $n) => ['{v}{dynamic l}{*}{/dynamic}', ['v' => $v = str_repeat('a', $n), 'l' => [$v]], "$v$v"]],
    'a long value with a zero byte' => [100_000_000, fn(int $n) => ['{v}{dynamic l}{*}{/dynamic}', ['v' => $v = "a\0" . str_repeat('b', $n), 'l' => [$v]], 'aa']],
    'htmlspecialchars' => $escaped('htmlspecialchars', '<', '&lt;'),
    'htmlspecialchars with nothing to do' => $escaped('htmlspecialchars', 'plain text', 'plain text'),
    'htmlentities' => $escaped('htmlentities', 'a"', 'a&quot;'),
    'addslashes' => $escaped('addslashes', "a'", "a\\'"),
    'rawurlencode' => $escaped('rawurlencode', ' ', '%20'),
    'files that are missing' => [1_000_000, fn(int $n) => [str_repeat('{include none.tpl}', $n), [], '']],
];

foreach ($cases as $what => [$size, $case]) {
    $size = max(50, intdiv((int) $size, $full ? 1 : $divisor));
    foreach ([false, true] as $as_file) {
        [$seconds, $wrong] = $measure($case, $size, $as_file);
        if ($wrong !== null) {
            echo "$what, size $size: $wrong\n";
        }
        if ($full) {
            printf("%-40s %11d %s %7.3f s\n", $what, $size, $as_file ? 'file' : 'text', $seconds);
            continue;
        }
        // Whatever grows with the square takes minutes at these sizes.
        if ($seconds > $limit) {
            printf("%s, size %d: %.1f seconds\n", $what, $size, $seconds);
        }
    }
}
echo count($cases), " cases\n";
?>
--EXPECT--
33 cases
