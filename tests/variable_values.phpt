--TEST--
Values of every type as text: read from the data, from an element, and from the data inside a loop
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

class Label
{
    public function __construct(private string $text)
    {
    }

    public function __toString(): string
    {
        return $this->text;
    }
}

enum Suit: string
{
    case Hearts = 'H';
}

$array = 'Array to string conversion';
$no_text = fn(string $class): array => fails("Error: Object of class $class could not be converted to string");
$text = 'by reference';
$list = [1];
$number = 7;
$noNumber = NAN;
$object = new Label('referenced');
$opened = fopen('php://memory', 'r');
$closed = fopen('php://memory', 'r');
fclose($closed);

// A value that has to stay a reference stands in an array of one.
$values = [
    ['text', '<b>{v}</b> {{ "', '<b>{v}</b> {{ "'], ['empty', '', ''], ['high bytes', "\xff\x80é", "\xff\x80é"], ['zero byte first', "\0b", ''],
    ['long', str_repeat('long', 5000), str_repeat('long', 5000)], ['zero', 0, '0'], ['largest', PHP_INT_MAX, '9223372036854775807'],
    ['smallest', PHP_INT_MIN, '-9223372036854775808'], ['true', true, '1'], ['false', false, ''], ['null', null, ''],
    ['whole float', 1.0, '1'], ['float', 0.1 + 0.2, '0.3'], ['third', 1 / 3, '0.33333333333333'], ['negative zero', -0.0, '-0'],
    ['large float', 1e100, '1.0E+100'], ['not a number', NAN, 'NAN'], ['infinite', -INF, '-INF'],
    ['empty array', [], noted('Array', $array)], ['array', ['a' => ['b' => 1]], noted('Array', $array)],
    ['object with text', new Label('label'), 'label'], ['object with a zero byte', new Label("a\0b"), 'a'],
    ['open resource', $opened, (string) $opened], ['closed resource', $closed, (string) $closed],
    ['referenced text', [&$text], 'by reference'], ['referenced array', [&$list], noted('Array', $array)],
    ['referenced integer', [&$number], '7'], ['referenced object', [&$object], 'referenced'],
    ['referenced float that is no number', [&$noNumber], 'NAN'],
    ['object without text', new stdClass(), $no_text('stdClass')], ['closure', [fn() => 1], $no_text('Closure')],
    ['enumeration', Suit::Hearts, $no_text('Suit')],
];
for ($length = 0; $length < 40; $length++) {
    $values[] = ["zero byte at $length", str_repeat('v', $length) . "\0" . str_repeat('w', 40 - $length), str_repeat('v', $length)];
}
$rows = [];
foreach ($values as [$what, $value, $expected]) {
    $value = is_array($value) && array_key_exists(0, $value) ? $value : [$value];
    $data = ['w' => $value, 'l' => $value, 'once' => [[]]];
    $rows[] = ["$what, data", '{w::0 other}', $data, $expected];
    $rows[] = ["$what, element", '{dynamic l}{* w::x}{/dynamic}', $data, $expected];
    $rows[] = ["$what, second", '{dynamic n,l}{*::none z::* n::*}{/dynamic}', $data, $expected];
    $rows[] = ["$what, data in a loop", "{dynamic once}{*::x w::0 'x'}{/dynamic}", $data, $expected];
}
$rows[] = ['a warning for each array', '{dynamic l}{*},{/dynamic}{l}', ['l' => [[], [1]]], noted('Array,Array,Array', $array, $array, $array)];
$rows[] = ['nothing is done after an error', '{v}{w}', ['v' => new stdClass(), 'w' => []], $no_text('stdClass')];

// Numbers look as PHP writes them, whatever the setting.
$numbers = [0, 9, 10, 99, 100, 12345, -100, 0.0001, 0.00012345, 0.00001, 1e-7, 123456.789, 1e14, 1e15, 123456789012345678, 1.5e300, 5e-324, 0.1 + 0.7,
    999999.9999995, 0.9999995, 1.0000005, 2.675, -12.3456785, 1e6, 123456.7, 99.995];
mt_srand(1);
for ($i = 0; $i < 2000; $i++) {
    $numbers[] = mt_rand(-1000000, 1000000) / 10 ** ($i % 9);
    $numbers[] = mt_rand() / mt_getrandmax() * 10 ** ($i % 40 - 20);
}
foreach (['14', '17', '-1', '0', '1', '6', '15', '16', '40'] as $precision) {
    $rows[] = ["precision $precision", function () use ($numbers, $precision): ?string {
        ini_set('precision', $precision);
        $asked = array_filter($numbers, fn($number) => template('{n}', ['n' => $number], true) !== (string) $number);
        $looped = template('{dynamic l}{*},{/dynamic}', ['l' => $numbers], true) === implode('', array_map(fn($number) => "$number,", $numbers));
        ini_restore('precision');
        return implode(' ', $asked) . ($looped ? '' : ' loop');
    }, null, ''];
}
table($rows);
?>
--EXPECT--
299 rows
