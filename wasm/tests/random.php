<?php

// Prints what becomes of random templates, one line each: php random.php FIRST COUNT, or with both in /batch.json.
// The same numbers make the same templates and data, on any build.

require __DIR__ . '/../../fuzz/input.php';

const REFERENCES = ['a', 'a', 'b', 'b', 'x', 'a::b', 'a::x', 'b::0', 'a::0::x', 'x::1', '0', '-5', 'num', 'visible', '*', '*',
    '*::x', '*::a', '*::0', '[*]', 'x::*', 'x::[*]', '*::num', 'none', 'ä', 'a.b', 'x::*::visible'];
const ODD_REFERENCES = ['', 'a::', '::a', 'a::*', 'b::*::a', '*::*', 'a::::b', 'a b c'];
const TEXTS = ['', 'x', ' ', "\n", 'Ann & <b>"Bob"</b>', "O'Neil\\", '{ ', ' }', '{{', '}}', 'ä€😀', "\xff", '100 %',
    '%d %s %%', "\0", "\t{\n}", 'h1{color:red}', "a'b'c"];
const ESCAPINGS = ['', '', '', 'htmlspecialchars ', 'htmlentities ', 'addslashes ', 'rawurlencode ',
    'Addslashes '];
const NUMBERS = ['I', 'J', 'K', 'f', 'g', 'h', 'j', 'k', 't', 'T', 'b', 's', 'z'];
const KEYS = 'abxabxabx01nve-#.@';

function one(array $values): mixed
{
    return $values[mt_rand(0, count($values) - 1)];
}

function reference(): string
{
    return one(mt_rand(0, 30) ? REFERENCES : ODD_REFERENCES);
}

function condition(): string
{
    $value = one(["=='x'", "!='x'", "=='1'", '==1', "== '0'", "==''", '==-5', "=='a b'", "==1.5", "=='", '=', " 'x'"]);
    return reference() . (mt_rand(0, 2) ? '' : $value);
}

function tag(int $depth): string
{
    switch ($depth > 0 ? mt_rand(0, 11) : mt_rand(5, 11)) {
        case 0:
        case 1:
            return '{' . one(['optional ', '!optional ']) . condition() . '}' . body($depth - 1) . '{/optional}';
        case 2:
        case 3:
        case 4:
            $kind = one(['dynamic', 'dynamic', 'rdynamic']);
            $names = one(['', '', 'x,', 'b,', 'a, ']);
            $end = mt_rand(0, 40) ? $kind : 'dynamic';
            return "{{$kind} $names" . reference() . '}' . body($depth - 1) . "{/$end}";
        case 5:
            return '{include ' . one(['in://a', 'in://b', 'in://c', 'file', '@', 'none', 'a::x']) . '}';
        case 6:
            $odd = one(['{', '}', '{/dynamic}', '{/optional}', '{optional}', '{dynamic}']);
            return mt_rand(0, 15) ? '{' . reference() . '}' : $odd;
        case 7:
            return '{' . reference() . one([' ', '  ']) . reference() . one(['', " 'no'", " ''", ' ', " 'a{b}'"]) . '}';
        default:
            return '{' . one(ESCAPINGS) . reference() . one(['', '', '', " 'no'", " b", " ''"]) . '}';
    }
}

function body(int $depth): string
{
    $body = '';
    for ($parts = mt_rand(1, 5); $parts > 0; $parts--) {
        $body .= mt_rand(0, 1) ? one(TEXTS) : tag($depth);
    }
    return $body;
}

/** In the language of fuzz/input.php. No open streams: their numbers depend on the build. */
function value(int $depth): string
{
    $deed = mt_rand(0, 9);
    return match ($depth > 0 ? mt_rand(0, 13) : mt_rand(6, 13)) {
        0, 1 => '[' . values($depth) . ']',
        2, 3 => '(' . pairs($depth) . ')',
        4 => one(['o', 'A', 'Q']) . '(' . pairs($depth) . ')',
        5 => 'R' . value($depth - 1),
        6, 7 => (string) mt_rand(0, 9),
        8 => one(NUMBERS),
        9 => one(['P', 'C', 'E', 'D', '&0', '&1', "X$deed", 'ua', 'ub']),
        10 => "S$deed\"" . strtr(one(TEXTS), '"', "'") . '"',
        default => '"' . strtr(one(TEXTS), '"', "'") . '"',
    };
}

function values(int $depth): string
{
    $values = '';
    for ($count = mt_rand(0, 4); $count > 0; $count--) {
        $values .= value($depth - 1);
    }
    return $values;
}

function pairs(int $depth): string
{
    $pairs = '';
    for ($count = mt_rand(0, 5); $count > 0; $count--) {
        $pairs .= KEYS[mt_rand(0, strlen(KEYS) - 1)] . value($depth - 1);
    }
    return $pairs;
}

function input(): string
{
    $options = '';
    if (mt_rand(0, 3) === 0) {
        $options = one(['R', 'O', 'L', 'Y', 'U', '!']) . mt_rand(0, 9);
    }
    $data = 'a' . value(3) . 'b[' . values(3) . ']' . pairs(3);
    return implode("\x1f", [body(4), $data, $options, body(2), body(1), body(0)]);
}

/** The result of both ways to call template(), and all that they reported. */
function outcome(string $bytes): array
{
    $input = new Input($bytes, false);
    return (fn() => [$this->run(true), $this->run(false)])->call($input);
}

// Data that is built in odd ways is reported outside of the calls, too, by PHP itself.
ini_set('display_errors', '0');
[$first, $count] = isset($argv[2]) ? [(int) $argv[1], (int) $argv[2]] : json_decode(file_get_contents('/batch.json'));
for ($number = $first; $number < $first + $count; $number++) {
    mt_srand($number);
    $bytes = input();
    try {
        $outcome = outcome($bytes);
    } catch (Throwable $error) {
        $outcome = [get_class($error), $error->getMessage()];
    }
    echo $number, ' ', addcslashes(serialize([$bytes, $outcome]), "\0..\37\\\177..\377"), "\n";
}
