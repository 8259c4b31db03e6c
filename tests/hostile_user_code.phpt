--TEST--
User code that runs in the middle of a call: it changes the data, throws, calls again, closes the file
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/spy.inc';

$fresh = fn(string $text): string => str_repeat($text, 2);
$throw = function (): void {
    throw new RuntimeException('thrown');
};
$thrown = fails('RuntimeException: thrown');
$array = 'Array to string conversion';

/** Renders rows that are a reference; the deed of the spy among them gets that reference. */
function walked(string $template, Closure $deed, array $rows = ['a', 0, 'b'], int|string $place = 1, string $text = 'spy'): Closure
{
    return function () use ($template, $deed, $rows, $place, $text): ?string {
        $rows[$place] = new Spy(function () use (&$rows, $deed): void {
            $deed($rows);
            gc_collect_cycles();
        }, $text);
        return template($template, ['l' => &$rows], true);
    };
}

$loop = '{dynamic l}[{[*]}{*}]{/dynamic}';
$back = '{rdynamic l}[{[*]}{*}]{/rdynamic}';
$gone = function (&$rows): void {
    $rows = null;
};
$grow = function (&$rows): void {
    unset($rows[1]);
    array_push($rows, ...range(1, 100));
};
$keyed = [$fresh('x') => 'a', $fresh('y') => 0, $fresh('z') => 'b'];
table([
    ['rows replaced', walked($loop, $gone), null, '[0a][1spy][2b]'],
    ['rows replaced, in reverse', walked($back, $gone), null, '[2b][1spy][0a]'],
    ['rows removed and added', walked($loop, $grow), null, '[0a][1spy][2b]'],
    ['rows with text keys', walked('{dynamic l}{*}{[*]}{htmlentities [*]},{/dynamic}', $gone, $keyed, 'yy'), null, 'axxxx,spyyyyy,bzzzz,'],
    ['compared key', walked('{dynamic l}{*}{optional [*] yy}={/optional}{/dynamic}', $gone, $keyed, 'yy'), null, 'aspy=b'],
    ['escaped', walked('{dynamic l}{htmlspecialchars *}{rawurlencode *}{addslashes *}{htmlentities *},{/dynamic}', $gone, text: '<'), null,
        'aaaa,&lt;%3C<&lt;,bbbb,'],
    ['the same rows in a loop around', walked('{dynamic o,l}{dynamic i,l}{o::[*]}{i::*}{/dynamic}{/dynamic}', $gone), null, '0a0spy0b'],
    ['read again after the walk', walked("$loop$loop", $gone), null, '[0a][1spy][2b]'],
    ['as another alternative', walked("{dynamic l}{*::none * 'x'}{*}{/dynamic}", $gone), null, 'aaspyspybb'],

    ['data replaced while it is analysed', function () use ($gone): ?string {
        $list = ['a'];
        return template('{s}{dynamic l}{*}{/dynamic}.', ['s' => new Spy(function () use (&$list, $gone) { $gone($list); }), 'l' => &$list], true);
    }, null, 'spy.'],
    ['data replaced by a text between the passes', function (): ?string {
        $list = ['a'];
        return template('{dynamic l}{s}{*}{/dynamic}{s}', ['s' => new Spy(function () use (&$list) { $list = 'none'; }), 'l' => &$list], true);
    }, null, 'spy'],
    ['data replaced by an object between the passes', function (): ?string {
        $list = ['a'];
        return template('{dynamic l}{[*]}{*}{/dynamic}{dynamic o}{*}{/dynamic}{s}',
            ['s' => new Spy(function () use (&$list) { $list = (object) ['p' => 'q']; }), 'l' => &$list, 'o' => [1]], true);
    }, null, 'pq1spy'],
    ['value found while analysed, replaced while rendered', function (): ?string {
        $value = ['an array'];
        $rows = ['x', new Spy(function () use (&$value) { $value = str_repeat('new', 2); }), 'y'];
        return template("{dynamic l}{*::x v 'd'}{*},{/dynamic}", ['l' => $rows, 'v' => &$value], true);
    }, null, noted('Arrayx,Arrayspy,newnewy,', $array, $array)],
    ['element that destroys itself', function (): ?string {
        $rows = [null];
        $rows[0] = new Spy(function () use (&$rows) { $rows[0] = null; });
        $data = ['l' => [&$rows[0]]];
        return template('{dynamic l}{*}{*}{addslashes *}{/dynamic}', $data, true);
    }, null, 'spy'],
    ['array that holds itself', function (): ?string {
        $list = ['a'];
        $list['num'] = [[&$list, 'b']];
        return template('{dynamic l}{*}{dynamic *}{*}{/dynamic}{dynamic *}{*::0}{/dynamic}{/dynamic}', ['l' => &$list], true);
    }, null, noted('aArrayArrayArray', $array, $array, $array)],
    ['rows whose last holder lets go', function (): ?string {
        $said = '';
        $rows = ['a'];
        $rows[] = new Last(function () use (&$said) { $said .= template('{a}', ['a' => 'later'], true); });
        $rows[] = new Spy(function () use (&$rows) { $rows = null; });
        return template('{dynamic l}{*}{/dynamic}', ['l' => &$rows], true) . $said;
    }, null, 'alastspylater'],
    ['rows whose last holder lets go and throws', function () use ($throw): ?string {
        $rows = [new Last($throw)];
        $rows[] = new Spy(function () use (&$rows) { $rows = null; });
        return template('{dynamic l}{*}{/dynamic}{x}', ['l' => &$rows], true);
    }, null, $thrown],
]);

// An exception ends the call wherever it comes from: no text, no warning, and no user code after it.
$after = new Spy(function (): void {
    echo "user code ran after an exception\n";
});
$handled = fn(string $template, array $data, bool $mode = true): Closure => function () use ($template, $data, $mode, $throw): ?string {
    set_error_handler($throw);
    try {
        return template($template, $data, $mode);
    } finally {
        restore_error_handler();
    }
};
// Under opcache the script's own file may be closed meanwhile.
$streams = streams();
$left_open = fn(): int => max(0, streams() - $streams);
$rest = ['spy' => new Spy($throw), 'after' => $after, 'l' => [new Spy($throw), $after], 'a' => [], 'la' => [[], $after], 'v' => 'V'];
$place = fn(string $template): array => [$template, $template, $rest, $thrown];
$stream = fn(string $deed, string $template): array =>
    ["$deed: $template", fn() => spied([$deed => $throw], $template, $rest), null, $thrown];
table([
    $place('a{spy}{after}'), $place('{none spy after}'), $place('{dynamic l}{*}{/dynamic}'), $place('{dynamic l}{dynamic a}{/dynamic}{*}{/dynamic}'),
    $place('{dynamic l}{htmlspecialchars *}{/dynamic}'), $place('{dynamic l}{addslashes *}{/dynamic}'), $place("{dynamic l}{*::x * 'y'}{/dynamic}"),
    $place('{dynamic l}{rawurlencode *}{/dynamic}'), $place('{dynamic a}{/dynamic}{spy}{/optional}'), $place('{optional none}{spy}{/optional}{after}'),
    ['error handler', $handled('{a}{after}', $rest), null, $thrown],
    ['error handler in a loop', $handled('{dynamic la}{*}{/dynamic}', $rest), null, $thrown],
    ['error handler of the error', $handled('{/optional}', $rest), null, $thrown],
    ['error handler of a missing file', $handled('none.tpl', $rest, false), null, $thrown],
    $stream('open', '{include spy://x}{after}'), $stream('read', '{include spy://x}{after}'), $stream('end', '{include spy://x}{after}'),
    $stream('close', '{include spy://x}{after}'), $stream('close', '{include spy://{/optional}'), $stream('close', '{dynamic l}{include spy://x}'),
    ['the file of the call itself', fn() => spied(['close' => $throw], 'spy://{v}', $rest, false), null, $thrown],
    ['exception on its way out while files are closed', fn() => spied(['close' => fn() => print "closing\n"], 'spy://{spy}', $rest, false), null, $thrown],
    ['all files closed', $left_open, null, 0],
    ['and the next call works', '{v}', $rest, 'V'],
]);

$again = function (int $levels) use (&$again): Spy {
    return new Spy(null, $levels ? template('<{s}>', ['s' => $again($levels - 1)], true) : 'x');
};
$endless = new Spy(function () use (&$endless): void {
    template('{dynamic l}{*}{/dynamic}', ['l' => [$endless]], true);
});
$endless_file = fn(): ?string => spied(['read' => fn() => template('spy://' . str_repeat('{v}', 2000), ['v' => 'V'])], 'spy://x', [], false);
$close = fn(string $function): Spy => new Spy(fn() => onStreams($function));
put(['long.tpl' => '{s}' . str_repeat('long ', 4000) . '{v}', 'around.tpl' => '<{include long.tpl}>' . str_repeat('.', 9000),
    'opens.tpl' => '{include spy://x}' . str_repeat('long ', 4000)]);
$text = '{dynamic l}{*}{/dynamic}';
table([
    ['called again from a conversion', fn() => template('{s}', ['s' => $again(20)], true), null, str_repeat('<', 20) . 'x' . str_repeat('>', 20)],
    ['called again in a loop, with names', fn() => template('{dynamic n,l}{n::*}{*}{/dynamic}', ['l' => [new Spy(fn() =>
        template('{dynamic n,l}{n::*}{/dynamic}', ['l' => ['x']], true)), 2]], true), null, 'spyspy22'],
    ['called again without end', fn() => template('{s}', ['s' => $endless], true), null, noted('spy', "Blocks nested too deeply in $text")],
    ['called from an error handler', function (): ?string {
        set_error_handler(fn() => template('{dynamic l}{*}{/dynamic}', ['l' => [1, 2]], true));
        $text = template('{dynamic l}{*}{/dynamic}', ['l' => [[], 'x']], true);
        restore_error_handler();
        return $text;
    }, null, 'Arrayx'],
    ['called from an output handler', function (): ?string {
        ob_start(fn() => template('{dynamic l}{*}{/dynamic}', ['l' => [1, 2]], true));
        echo 'x';
        return ob_get_clean() . template('{a}', ['a' => 'x'], true);
    }, null, 'xx'],
    ['fclose of the file', fn() => template('around.tpl', ['s' => $close('fclose'), 'v' => 'V']), null,
        '<spy' . str_repeat('long ', 4000) . 'V>' . str_repeat('.', 9000)],
    ['pclose of the file', fn() => template('around.tpl', ['s' => $close('pclose'), 'v' => 'V']), null,
        '<spy' . str_repeat('long ', 4000) . 'V>' . str_repeat('.', 9000)],
    ['pclose while an included file is opened', fn() => spied(['open' => fn() => onStreams('pclose')], 'opens.tpl', [], false), null,
        'x' . str_repeat('long ', 4000)],
    ['pclose of what the file stands on', fn() => template('data:text/plain,{s}' . str_repeat('long ', 4000), ['s' => $close('pclose')]),
        null, fails('basic_string::append')],
    ['all files closed', $left_open, null, 0],
]);

// The methods that a stream is read by close it, or read it, themselves.
$closing = [];
foreach (['read' => 'spy://', 'end' => 'spy://', 'filter' => 'php://filter/read=spy/resource=spy://'] as $at => $file) {
    $include = "<{include $file" . str_repeat('long', 5000) . '}>';
    $whole = '<' . str_repeat('long', 5000) . '>';
    array_push($closing,
        ["$at: fclose", fn() => spied([$at => fn() => onStreams('fclose')], $include, []), null, $at === 'filter' ? '<' . str_repeat('long', 5000) . '.>' : $whole],
        ["$at: pclose", fn() => spied([$at => fn() => onStreams('pclose')], $include, []), null, $whole],
        ["$at: pclose and an exception", fn() => spied([$at => fn() => [onStreams('pclose'), $throw()]], $include, []), null, $thrown],
        ["$at: pclose and a call", fn() => spied([$at => fn() => [onStreams('pclose'), spied([], $include, [])]], $include, []), null, $whole],
        ["$at: pclose in a Fiber that is left", function () use ($at, $include): ?string {
            $fiber = new Fiber(fn() => spied([$at => fn() => [onStreams('pclose'), Fiber::suspend('left')]], $include, []));
            return $fiber->start();
        }, null, 'left'],
    );
}
table([...$closing,
    ['read: fgets', fn() => spied(['read' => fn() => onStreams('fgets')], '<{include spy://x}>', []), null, '<x>'],
    ['closed: pclose', fn() => spied(['close' => fn() => onStreams('pclose')], '<{include spy://x}>', []), null, '<x>'],
    ['a filter that does need its stream', fn() => template('php://filter/read=spy/resource=spy://x', []), null, 'x.'],
    ['all files closed', $left_open, null, 0],
]);
?>
--EXPECT--
17 rows
24 rows
10 rows
19 rows
