--TEST--
Arguments: what is refused and how, what is converted, zero bytes in and out
--EXTENSIONS--
template
--INI--
display_errors=0
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/child.inc';

/** A call with wrong arguments: PHP's error, then the last warning, raised while that error is pending. */
function refused(mixed ...$arguments): string
{
    set_error_handler(null);
    error_clear_last();
    try {
        template(...$arguments);
        return 'accepted';
    } catch (Error $error) {
        $last = error_get_last() ?? ['type' => 0, 'message' => 'no warning'];
        return get_class($error) . ": {$error->getMessage()} / {$last['type']} {$last['message']}";
    } finally {
        restore_error_handler();
    }
}

$count = 'ArgumentCountError: template() expects ';
$name = 'TypeError: template(): Argument #1 ($fileName) must be of type string';
$data = 'TypeError: template(): Argument #2 ($userData) must be of type array';
$mode = 'TypeError: template(): Argument #3 ($string_mode) must be of type bool';
$then = ' / 2 Error while parsing parameters';
$who = ['who' => 'you'];
$alias = &$who;
put(['plain.tpl' => 'file {who}', 'zero.tpl' => "a\0b{who}\0"]);

table([
    ['no argument', fn() => refused(), null, "{$count}at least 2 arguments, 0 given$then"],
    ['no data', fn() => refused('x'), null, "{$count}at least 2 arguments, 1 given$then"],
    ['four arguments', fn() => refused('x', [], true, 1), null, "{$count}at most 3 arguments, 4 given$then"],
    ['array as name', fn() => refused([], []), null, "$name, array given$then"],
    ['text as data', fn() => refused('x', 'y'), null, "$data, string given$then"],
    ['object as data', fn() => refused('x', new ArrayObject()), null, "$data, ArrayObject given$then"],
    ['array as mode', fn() => refused('x', [], []), null, "$mode, array given$then"],
    ['a handler sees the error alone', fn() => template('x', null), null, fails("$data, null given")],

    ['integer as name, 1 as mode', fn() => template(12, [], 1), null, '12'],
    ['object as name, 0 as mode', fn() => template(new SplFileInfo('plain.tpl'), $who, 0), null, 'file you'],
    ['null as name', fn() => template(null, [], true), null,
        noted('', 'level 8192: template(): Passing null to parameter #1 ($fileName) of type string is deprecated')],
    ['mode left out', fn() => template('plain.tpl', $who), null, 'file you'],
    ['mode true takes a file name as text', fn() => template('plain.tpl', $who, true), null, 'plain.tpl'],
    ['a name that ends the request', fn() => child('set_error_handler(fn($type, $message) => print($message));
        class Last { function __toString(): string { exit("the end"); } }
        template(new Last(), []);'), null, 'the end | exit 0'],
    ['named, in another order', fn() => template(string_mode: true, userData: $who, fileName: '-{who}'), null, '-you'],
    ['data through a reference variable', fn() => template('{who}', $alias, true), null, 'you'],

    ['text cut at a zero byte', fn() => template("a{who\0}{x:::y}", $who, true), null, 'ayou'],
    ['nothing before the zero byte', fn() => template("\0{who}", $who, true), null, ''],
    ['path cut at a zero byte', fn() => template("plain.tpl\0.bak", $who), null, 'file you'],
    ['message names the cut path', fn() => template("gone.tpl\0x", []), null, fails('Could not open file gone.tpl')],
    ['an empty result is a string of its own', function (): string {
        $empty = template('', [], true);
        ob_start();
        debug_zval_dump($empty);
        return trim(ob_get_clean());
    }, null, 'string(0) "" refcount(2)'],
    ['zero bytes of a file stay', fn() => template('zero.tpl', $who), null, "a\0byou\0"],
]);
?>
--EXPECT--
22 rows
