<?php

// What a request of the test with threads does: calls of every kind. Returns how many, or -1 when one came out wrong.

$folder = __DIR__ . '/templates';
set_include_path($folder);
error_reporting(E_ALL);
$messages = [];
set_error_handler(function (int $level, string $message) use (&$messages): bool {
    $messages[] = $message;
    return true;
});

// Each thread's data differ, so that what leaks from one to another shows.
$own = bin2hex(random_bytes(8));
$inner = new class ($own) {
    public function __construct(private string $own)
    {
    }

    public function __toString(): string
    {
        return template('<{v}>', ['v' => $this->own], true);
    }
};
$rows = [['name' => $own, 'price' => 1.5], ['name' => "<$own>", 'price' => 2]];
$data = ['own' => $own, 'rows' => $rows, 'inner' => $inner, 'list' => [$inner, $inner], 'part' => 'part.tpl',
    'object' => [['num' => (object) ['a' => $own]]], 'many' => range(1, 50), "k\xc3\xa4y" => $own];
$calls = [
    fn() => [template('page.tpl', $data), "[$own]<p>$own</p><p>&lt;$own&gt;</p>"],
    fn() => [template("{own}{k\xc3\xa4y}", $data, true), $own . $own],
    fn() => [template('{include part}', $data, true), "[$own]"],
    fn() => [template('{include $folder/none.tpl}x', $data, true), 'x'],
    fn() => [template('{dynamic rows}{htmlspecialchars *::name}{*::price},{/dynamic}', $data, true), "{$own}1.5,&lt;$own&gt;2,"],
    fn() => [template('{inner}{dynamic list}{*}{/dynamic}', $data, true), str_repeat("<$own>", 3)],
    fn() => [template('{dynamic object}{dynamic *}{[*]}{*}{/dynamic}{/dynamic}', $data, true), "a$own"],
    fn() => [template('{dynamic many}{dynamic many}{optional *::0}x{/optional}{/dynamic}{/dynamic}', $data, true), ''],
    fn() => [template('{dynamic rows}{optional *::name ' . $own . '}only{/optional}{/dynamic}', $data, true), 'only'],
    function () use ($own, $data): array {
        $pausing = new class {
            public function __toString(): string
            {
                return (string) Fiber::suspend();
            }
        };
        $data = ['pause' => 'p', 'list' => [$pausing]] + $data;
        $fiber = new Fiber(fn() => template('{dynamic list}{*}{pause}{/dynamic}', $data, true));
        $fiber->start();
        $fiber->resume($own);
        return [$fiber->getReturn(), "{$own}p"];
    },
];
$failing = [
    [fn() => template("{/optional}$own", [], true), "Unexpected closing optional tag in {/optional}$own"],
    [fn() => template("none-$own.tpl", []), "Could not open file none-$own.tpl"],
    [fn() => template('round.tpl', $data), "Include block bad parameter 'round.tpl': circle is detected in round.tpl"],
    [fn() => template('{dynamic list}{*}{a:::b}{/dynamic}', $data, true), "Bad formated parameter'a:::b': too many : in {dynamic list}{*}{a:::b}{/dynamic}"],
];

$count = 0;
for ($round = 0; $round < 45; $round++) {
    foreach ($calls as $number => $call) {
        [$text, $expected] = $call();
        if ($text !== $expected || $messages) {
            echo "call $number: expected ", var_export($expected, true), ', got ', var_export($text, true), ' ', implode(', ', $messages), "\n";
            return -1;
        }
        $count++;
    }
    foreach ($failing as [$call, $expected]) {
        $text = $call();
        if ($text !== null || $messages !== [$expected]) {
            echo "expected the error $expected, got ", var_export($text, true), ' ', implode(', ', $messages), "\n";
            return -1;
        }
        $messages = [];
        $count++;
    }
}
return $count;
