--TEST--
Calls inside Fibers: suspended in the middle and resumed, mixed with others, never resumed
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/spy.inc';
require __DIR__ . '/child.inc';

$pause = fn() => Fiber::suspend();
$spy = new Spy($pause);
$data = ['s' => $spy, 'l' => ['a', $spy, 'b'], 'k' => ['x' => $spy, 'y' => 'b'], 'o' => [['num' => (object) ['p' => $spy, 'q' => 'c']]], 'v' => 'V'];
put(['part.tpl' => '({s}{dynamic n,l}{n::*}{/dynamic})']);

/** Runs a call in a Fiber to its end; something else goes on whenever it is suspended. */
function resumed(Closure $call, ?Closure $meanwhile = null): ?string
{
    $fiber = new Fiber($call);
    for ($fiber->start(); $fiber->isSuspended(); $fiber->resume()) {
        $meanwhile && $meanwhile();
        gc_collect_cycles();
    }
    return $fiber->getReturn();
}

$places = [
    ['conversion', '{s}{v}', 'spyV'],
    ['loop', '{dynamic n,l}{[*]}{*}{n::*},{/dynamic}', '0aa,1spyspy,2bb,'],
    ['loops in one another', '{dynamic n,l}{rdynamic m,l}{n::*}{m::*},{/rdynamic}{/dynamic}', 'ab,aspy,aa,spyb,spyspy,spya,bb,bspy,ba,'],
    ['properties', '{dynamic o}{dynamic *}{[*]}{*}{/dynamic}{/dynamic}', 'pspyqc'],
    ['escaped, with keys', '{dynamic k}{htmlspecialchars *}{optional [*] x}{[*]}{/optional}{/dynamic}', 'spyxb'],
    ['included file', '<{include part.tpl}{include part.tpl}>', '<(spyaspyb)(spyaspyb)>'],
    ['alternative', "{dynamic l}{*::x s 'y'}{/dynamic}", 'spyspyspy'],
];
$rows = [];
foreach ($places as [$what, $text, $expected]) {
    $call = fn() => template($text, $data, true);
    $rows[] = [$what, fn() => resumed($call), null, $expected];
    $rows[] = ["$what, the same call meanwhile", fn() => resumed($call, fn() => resumed($call)), null, $expected];
}
$stream = fn(string $deed, ?string $expected = '<x><y>'): array => [$deed, fn() => resumed(
    fn() => spied([$deed => $pause], '<{include spy://x}><{include spy://y}>', $data)), null, $expected];
table([
    ...$rows,
    $stream('open'), $stream('read'), $stream('end'), $stream('close'),
    ['error handler', function () use ($pause): ?string {
        set_error_handler($pause);
        $text = resumed(fn() => template('{dynamic l}{*}{/dynamic}', ['l' => [[], 1, []]], true));
        restore_error_handler();
        return $text;
    }, null, 'Array1Array'],
    ['template() is the Fiber itself', function () use ($data): ?string {
        $fiber = new Fiber('template');
        $fiber->start('{s}{v}', $data, true);
        $fiber->resume();
        return $fiber->getReturn();
    }, null, 'spyV'],
    ['rows replaced meanwhile', function () use ($spy): ?string {
        $list = ['a', $spy, 'b'];
        return resumed(fn() => template('{dynamic l}{*}{/dynamic}', ['l' => &$list], true), function () use (&$list) { $list = str_repeat('x', 9); });
    }, null, 'aspyb'],
    ['an exception comes in', function () use ($data): ?string {
        $fiber = new Fiber(fn() => template('{dynamic l}{*}{/dynamic}', $data, true));
        $fiber->start();
        return $fiber->throw(new RuntimeException('thrown in'));
    }, null, fails('RuntimeException: thrown in')],
    ['fifty at once, resumed in reverse', function () use ($data): string {
        for ($i = 0; $i < 50; $i++) {
            $fibers[$i] = new Fiber(fn() => template("{dynamic n$i,l}{n$i::*}{i}{/dynamic}", ['i' => $i] + $data, true));
            $fibers[$i]->start();
        }
        $text = '';
        while ($fiber = array_pop($fibers)) {
            $fiber->resume();
            $text .= $fiber->getReturn() . ',';
        }
        return $text;
    }, null, implode('', array_map(fn($i) => "a{$i}spy{$i}b{$i},", range(49, 0)))],
    ['goes on after the call in which it began', function () use ($data): string {
        $fiber = null;
        $begin = new Spy(function () use (&$fiber, $data) {
            $fiber = new Fiber(fn() => template('[{dynamic l}{*}{/dynamic}]', $data, true));
            $fiber->start();
        });
        $text = template('<{dynamic l}{*}{/dynamic}>', ['l' => [1, $begin, 2]], true);
        $fiber->resume();
        return $text . $fiber->getReturn();
    }, null, '<1spy2>[aspyb]'],
    ['deep nesting', fn() => resumed(fn() => template(str_repeat('{dynamic l}', 1000) . '{*}' . str_repeat('{/dynamic}', 1000), ['l' => [$spy]], true)), null, 'spy'],
    ['too deep', fn() => strlen(outcome(fn() => resumed(fn() => template(str_repeat('{dynamic l}', 100000), $data, true)))[1][0]), null, strlen('Blocks nested too deeply in ') + 1100000],
]);

// Left alone: PHP ends such a Fiber when nobody holds it any more.
$left = function (string $text, array $deeds = []) use ($data): string {
    $object = new Spy(fn() => Fiber::suspend());
    $known = WeakReference::create($object);
    $fiber = new Fiber(fn() => spied($deeds, $text, ['l' => [1, $object, new Spy(fn() => print 'user code ran')]] + $data));
    $fiber->start();
    $streams = streams();
    unset($object, $fiber);
    gc_collect_cycles();
    return ($known->get() ? 'kept' : 'freed') . ', streams ' . (streams() - $streams);
};
$flat = function () use ($left, $pause): int {
    for ($i = 0; $i < 20; $i++) {
        $used = $before ?? 0;
        $left('{dynamic l}{*}{/dynamic}');
        $left('{include part.tpl}');
        $left('{include spy://x}', ['close' => $pause]);
        $before = memory_get_usage();
    }
    return $before - $used;
};
table([
    ['in a loop', fn() => $left('{dynamic l}{dynamic l}{*}{/dynamic}{/dynamic}'), null, 'freed, streams 0'],
    ['in a conversion', fn() => $left('{s}'), null, 'freed, streams 0'],
    ['in an included file', fn() => $left('{include part.tpl}{include part.tpl}'), null, 'freed, streams 0'],
    ['while a file is read', fn() => $left('{include spy://x}', ['read' => $pause]), null, 'freed, streams -1'],
    ['while a file is closed', fn() => $left('{include spy://x}', ['close' => $pause]), null, 'freed, streams 0'],
    ['memory of the last of 20 rounds', $flat, null, 0],
]);

$prelude = sprintf('require %s; require %s;', var_export(__DIR__ . '/table.inc', true), var_export(__DIR__ . '/spy.inc', true))
    . '$pause = new Spy(fn() => Fiber::suspend()); $start = function (string $text, $spy) { $fiber = new Fiber(fn() => print template($text, ["l" => [1, $spy, 2]], true));'
    . '$fiber->start(); return $fiber; }; $l = "{dynamic l}{*}{/dynamic}"; register_shutdown_function(fn() => print "|" . template($l, ["l" => [3]], true));';
$ended = fn(string $code): Closure => fn() => preg_replace('/\s*Fatal error: .*? on line \d+\s*/s', 'F', child("$prelude\n$code"));
table([
    ['left alone to the end', $ended('$fiber = $start($l, $pause); echo "end";'), null, 'end|3 | exit 0'],
    ['exit inside', $ended('$other = $start($l, $pause); $start($l, new Spy(fn() => exit(4)));'), null, '|3 | exit 4'],
    ['fatal error inside', $ended('$other = $start($l, $pause); $start($l, new Spy(fn() => @trigger_error("x", E_USER_ERROR)));'), null, 'F|3 | exit 255'],
    ['fatal error outside', $ended('$other = $start($l, $pause); @trigger_error("x", E_USER_ERROR);'), null, 'F|3 | exit 255'],
    ['fatal error in a call around', $ended('template($l, ["l" => [new Spy(function () use ($start, $l, $pause) {
        $GLOBALS["f"] = $start("{include spy://x}$l", $pause); @trigger_error("x", E_USER_ERROR); })]], true);'), null, 'F|3 | exit 255'],
    ['resumed by the last code of the request', $ended('$fiber = $start($l, $pause); register_shutdown_function(fn() => $fiber->resume());'), null, '|31spy2 | exit 0'],
]);
?>
--EXPECT--
26 rows
6 rows
6 rows
