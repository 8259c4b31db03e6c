--TEST--
Lazy objects: they initialise themselves when a loop or an integer key asks for their properties
--EXTENSIONS--
template
--SKIPIF--
<?php
if (PHP_VERSION_ID < 80400) {
    die('skip PHP has lazy objects since 8.4');
}
?>
--FILE--
<?php
require __DIR__ . '/table.inc';

class Point
{
    public $x = 'default';
    protected $y = 'Y';
    private int $never;

    public function set(string $x): void
    {
        $this->x = $x;
    }

    public function __toString(): string
    {
        return "at $this->x";
    }
}

$class = new ReflectionClass(Point::class);
$ghost = fn(Closure $deed): Point => $class->newLazyGhost(fn(Point $point) => $deed($point));
$proxy = fn(Closure $deed): Point => $class->newLazyProxy(function () use ($deed): Point {
    $deed($point = new Point());
    return $point;
});
$set = fn(Point $point) => $point->set('X');
$loop = '{dynamic l}{dynamic *}{[*]}={*},{/dynamic}{/dynamic}';
$in = fn(Point $point): array => ['l' => [['num' => $point]]];

$rows = [];
foreach (['ghost' => $ghost, 'proxy' => $proxy] as $kind => $make) {
    // Counting references shows an uninitialised object in another way: each call makes its own.
    $rows[] = ["$kind walked", fn() => template($loop, $in($make($set)), true), null, 'x=X,=Y,'];
    $rows[] = ["$kind walked twice, initialised once", function () use ($make, $loop, $in): ?string {
        $times = 0;
        $object = $make(function (Point $point) use (&$times) { $point->set(++$times); });
        return template("$loop$loop", $in($object), true) . template('{v}', ['v' => $object], true);
    }, null, 'x=1,=Y,x=1,=Y,at 1'];
    $rows[] = ["$kind as a value", fn() => template("{v}{dynamic l}{htmlspecialchars *}{/dynamic}", ['v' => $make($set), 'l' => [$make($set)]], true), null, 'at Xat X'];
    $rows[] = ["integer key of a $kind", fn() => template("{dynamic l}{*::0 'none'}{/dynamic}", ['l' => [$make($set)]], true), null, 'none'];
    $rows[] = ["a $kind that isn't asked", fn() => template("{dynamic l}{*::x}{optional *}there{/optional}{/dynamic}",
        ['l' => [$make(fn() => throw new Exception('asked'))]], true), null, '{*::x}there'];
    foreach (['walked' => $loop, 'with an integer key' => "{dynamic v}{*::0 'none'}{/dynamic}", 'as a value' => '{v::0}'] as $how => $template) {
        $object = $make(fn() => throw new Exception('no'));
        $rows[] = ["a $kind that throws, $how", fn() => template($template, $in($object) + ['v' => [$object]], true), null, fails('Exception: no')];
    }
    $rows[] = ["a $kind that has thrown is asked again", function () use ($make, $loop, $in): string {
        $times = 0;
        $object = $make(function (Point $point) use (&$times) { $times++ ? $point->set('later') : throw new Exception('at first'); });
        try {
            return (string) template($loop, $in($object), true);
        } catch (Exception $first) {
            return $first->getMessage() . ' ' . template($loop, $in($object), true);
        }
    }, null, 'at first x=later,=Y,'];
    $rows[] = ["a $kind that calls template() with itself", function () use ($make, $loop, $in): ?string {
        $object = null;
        $object = $make(function (Point $point) use (&$object, $loop, $in) { $point->set(template($loop, $in($point), true)); });
        return template($loop, $in($object), true);
    }, null, 'x=x=default,=Y,,=Y,'];
    $rows[] = ["a $kind that takes the data away", function () use ($make, $loop, $set): ?string {
        $rows = [['num' => $make(function (Point $point) use (&$rows, $set) { $rows = null; $set($point); })]];
        return template($loop, ['l' => &$rows], true);
    }, null, 'x=X,=Y,'];
    foreach (['x' => '{dynamic l}{dynamic *::0}{[*]}={*},{/dynamic}{/dynamic}', 'none' => "{dynamic l}{*::0::num::0 'none'}{/dynamic}"] as $expected => $template) {
        $rows[] = ["a $kind that takes itself out of its container, $template", function () use ($make, $set, $template): ?string {
            $list = new SplFixedArray(1);
            $list[0] = ['num' => $make(function (Point $point) use ($list, $set) { $list[0] = null; $set($point); })];
            return template($template, ['l' => [$list]], true);
        }, null, $expected === 'x' ? 'x=X,=Y,' : $expected];
    }
    $rows[] = ["a $kind that pauses its Fiber", function () use ($make, $loop, $in): ?string {
        $object = $make(function (Point $point) { $point->set(Fiber::suspend()); });
        $fiber = new Fiber(fn() => template($loop, $in($object), true));
        $fiber->start();
        $fiber->resume('resumed');
        return $fiber->getReturn();
    }, null, 'x=resumed,=Y,'];
}
table($rows);
?>
--EXPECT--
28 rows
