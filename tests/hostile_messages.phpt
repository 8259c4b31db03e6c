--TEST--
Messages: any bytes in a name, a text or a reference, percent signs by the thousand, very long ones
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$closing = 'Unexpected closing optional tag in ';
$missing = 'Could not open file ';
$text = fn(string $what, string $text, string $message): array => [$what, fn() => template($text, [], true), null, fails($message)];
$file = fn(string $what, string $name, string $message): array => [$what, fn() => template($name, []), null, fails($message)];

// Every byte, and every byte behind a percent sign. PHP's formatter takes these for a part of a directive.
$flags = str_split('-+# 0123456789.%Lltzjh');
$rows = [];
for ($code = 1; $code < 256; $code++) {
    $byte = chr($code);
    $plain = $byte === '%' ? '%%' : $byte;
    $rows[] = $file("name with byte $code", "./no{$plain}file", "{$missing}./no{$byte}file");
    if (!in_array($byte, $flags)) {
        $rows[] = $file("name with a percent sign and byte $code", "./%{$byte}q%{$byte}z", "{$missing}./%{$byte}q%{$byte}z");
    }
    if (!in_array($byte, ['{', '}'])) {
        $rows[] = $text("text with byte $code", "$plain{/optional}", "$closing$byte{/optional}");
    }
    if (!preg_match('/[\s\':{}]/', $byte)) {
        $rows[] = $text("reference with byte $code", "{a$plain::}", "Bad formated parameter'a$byte::': too many : in {a$byte::}");
    }
}
table($rows);

// What could read an argument that isn't there, by this PHP or another, or fill memory: it is printed as it stands.
$directives = [];
foreach (['', '-', '+', '#', '0', ' ', '-5', '05', '.3', '5.3', '.*', '*', '*.*', '-*.*', '1000000000', '.1000000000', '9999999999999999999'] as $flag) {
    foreach (['', 'l', 'll', 'h', 'hh', 'z', 't', 'j', 'L'] as $size) {
        foreach (array_diff([...range('a', 'z'), ...range('A', 'Z')], str_split('hlLztj')) as $conversion) {
            $directives[] = "%$flag$size$conversion";
        }
    }
}
$every = implode(' ', $directives);
$many = str_repeat('%s%n%Z%.tp%d%p%ld%*d%.*s', 20000);
$long = str_repeat('long%% ', 200000);
table([
    $text('every directive that could read an argument', "$every{/optional}", "$closing$every{/optional}"),
    $text('touching one another', strtr($every, [' ' => '']) . '{/optional}', $closing . strtr($every, [' ' => '']) . '{/optional}'),
    $text('behind doubled signs', '%%' . strtr($every, [' ' => '%%']) . '{/optional}', "$closing%" . strtr($every, [' ' => '%']) . '{/optional}'),
    $text('thousands of directives', "$many{/optional}", "$closing$many{/optional}"),
    $text('a million bytes', "$long{/optional}", $closing . strtr($long, ['%%' => '%']) . '{/optional}'),
    $file('a name of a million bytes', $many, $missing . $many),
    $file('100%%', '100%%', "{$missing}100%"),
    $text('an argument of a million bytes', "{a$many::}", "Bad formated parameter'a$many::': too many : in {a$many::}"),
    $file('the name ends at a zero byte', "no%s\0%s.tpl", "{$missing}no%s"),
    ['the handler gets its own copy', function () use ($many): string {
        $kept = [];
        set_error_handler(function (int $level, string $message) use (&$kept): bool {
            return (bool) $kept[] = $message;
        });
        foreach ([1, 2, 3] as $i) {
            template("%s$i", []);
        }
        restore_error_handler();
        return implode(' ', $kept);
    }, null, 'Could not open file %s1 Could not open file %s2 Could not open file %s3'],
    ['the message that PHP keeps', function (): string {
        set_error_handler(null);
        @template('no%s%n.tpl', []);
        restore_error_handler();
        return error_get_last()['message'] ?? '';
    }, null, 'Could not open file no%s%n.tpl'],
]);
?>
--EXPECT--
986 rows
11 rows
