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
$text = 'by reference';
$list = [1];
$number = 7;
$object = new Label('referenced');
$opened = fopen('php://memory', 'r');
$closed = fopen('php://memory', 'r');
fclose($closed);

$values = [
    ['text', 'some text', 'some text'],
    ['empty', '', ''],
    ['markup and braces as they are', "<b>{v}</b> {{ \"'\\", "<b>{v}</b> {{ \"'\\"],
    ['high bytes', "\xff\x80é", "\xff\x80é"],
    ['cut at a zero byte', "a\0b", 'a'],
    ['zero byte first', "\0b", ''],
    ['long', str_repeat('long', 5000), str_repeat('long', 5000)],
    ['zero', 0, '0'],
    ['negative', -5, '-5'],
    ['largest', PHP_INT_MAX, '9223372036854775807'],
    ['smallest', PHP_INT_MIN, '-9223372036854775808'],
    ['true', true, '1'],
    ['false', false, ''],
    ['null', null, ''],
    ['whole float', 1.0, '1'],
    ['float', 0.1 + 0.2, '0.3'],
    ['third', 1 / 3, '0.33333333333333'],
    ['negative zero', -0.0, '-0'],
    ['large float', 1e100, '1.0E+100'],
    ['not a number', NAN, 'NAN'],
    ['infinite', -INF, '-INF'],
    ['empty array', [], noted('Array', $array)],
    ['array', ['a' => ['b' => 1]], noted('Array', $array)],
    ['object with text', new Label('label'), 'label'],
    ['object with a zero byte', new Label("a\0b"), 'a'],
    ['open resource', $opened, (string) $opened],
    ['closed resource', $closed, (string) $closed],
    ['referenced text', [&$text], 'by reference'],
    ['referenced array', [&$list], noted('Array', $array)],
    ['referenced integer', [&$number], '7'],
    ['referenced object', [&$object], 'referenced'],
    ['object without text', new stdClass(), fails('Error: Object of class stdClass could not be converted to string')],
    ['closure', [fn() => 1], fails('Error: Object of class Closure could not be converted to string')],
    ['enumeration', Suit::Hearts, fails('Error: Object of class Suit could not be converted to string')],
];

$rows = [];
foreach ($values as [$what, $value, $expected]) {
    // What an array of one holds under 0 is the value itself: a copy would lose the reference.
    $data = ['l' => is_array($value) && array_key_exists(0, $value) ? $value : [$value], 'once' => [[]]];
    $data['w'] = $data['l'];
    $rows[] = ["$what, data", '{w::0 other}', $data, $expected];
    $rows[] = ["$what, element", '{dynamic l}{* w::x}{/dynamic}', $data, $expected];
    $rows[] = ["$what, data in a loop", "{dynamic once}{*::x w::0 'x'}{/dynamic}", $data, $expected];
}
table($rows);

$precise = function (): ?string {
    $before = ini_set('precision', '17');
    try {
        return template('{v}{dynamic l}{*}{/dynamic}', ['v' => 0.1, 'l' => [1.5]], true);
    } finally {
        ini_set('precision', $before);
    }
};
table([
    ['precision', $precise, null, '0.100000000000000011.5'],
    ['a warning for each array printed', '{dynamic l}{*},{/dynamic}{l}', ['l' => [[], [1]]],
        noted('Array,Array,Array', $array, $array, $array)],
    ['no text after the error', '{v}{w}', ['v' => new stdClass(), 'w' => []],
        fails('Error: Object of class stdClass could not be converted to string')],
]);
?>
--EXPECT--
102 rows
3 rows
