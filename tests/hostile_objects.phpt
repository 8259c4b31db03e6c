--TEST--
Objects as rows: classes that build their properties anew, hide them or have none; changed while they are walked
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/spy.inc';

enum Plain
{
    case One;
}

enum Backed: int
{
    case Two = 2;
}

class Magic
{
    public $real = 'r';

    public function __get(string $name): mixed
    {
        return print "__get ran\n";
    }

    public function __isset(string $name): bool
    {
        return (bool) print "__isset ran\n";
    }
}

final class Fixed
{
    public readonly string $late;
    private readonly array $hidden;

    public function __construct(public readonly string $text = 't')
    {
    }
}

#[AllowDynamicProperties]
class Row extends SplFixedArray
{
    public $own = 'o';
    private $kept = 'k';
}

function numbers(): Generator
{
    yield 1;
}

$keys = '{dynamic l}{dynamic *}{[*]}.{/dynamic}{/dynamic}';
$values = '{dynamic l}{dynamic *}{*}.{/dynamic}{/dynamic}';
$under = fn(object $object): array => ['l' => [['num' => $object]]];
$fixed = SplFixedArray::fromArray(['a', ['b'], new Spy(null, 'c')]);
$row = new Row(3);
$row[0] = 'a';
$row[2] = ['b'];
$row->late = 'l';
$weak = new WeakMap();
$weak[$fixed] = 1;
$container = new ArrayObject(['inside' => 1], ArrayObject::ARRAY_AS_PROPS);
$listed = new ArrayObject(['inside' => 1], ArrayObject::STD_PROP_LIST);
$interval = new DateInterval('P1DT2H');
$unset = new class { public int $a = 1; public int $b = 2; public int $c = 3; };
unset($unset->a, $unset->c);
$inherits = new class extends ArrayObject { public $own = 'o'; protected $kept = 'k'; };
$numbered = (object) [5 => 'five', '-1' => 'minus'];

table([
    ['plain enumeration', $keys, $under(Plain::One), 'name.'],
    ['backed enumeration', $values, $under(Backed::Two), 'Two.2.'],
    ['closure', $keys, $under(fn() => 1), ''],
    ['method as a closure', $keys, $under($container->count(...)), ''],
    ['generator', $keys, $under(numbers()), ''],
    ['Fiber', $keys, $under(new Fiber('strlen')), ''],
    ['weak map', $keys, $under($weak), ''],
    ['weak reference', $keys, $under(WeakReference::create($fixed)), ''],
    ['getters of the class are not asked', "{dynamic l}{dynamic *}{[*]}{*}{*::0 'no'}{/dynamic}{/dynamic}", $under(new Magic()), 'realrno'],
    ['read-only properties, one without a value', $values, $under(new Fixed()), 't.'],
    ['properties removed', $keys, $under($unset), 'b.'],
    ['SplFixedArray', $values, $under($fixed), noted('a.Array.c.', 'Array to string conversion')],
    ['class derived from SplFixedArray', $keys . $values, $under($row), noted('own..late.0.1.2.o.k.l.a..Array.', 'Array to string conversion')],
    ['container', $keys, $under($container), ''],
    ['container that lists its properties', $keys, $under($listed), ''],
    ['class derived from a container', $values, $under($inherits), 'o.k.'],
    ['DateInterval', '{dynamic l}{dynamic n,*}{optional [*] h}{*}{/optional}{/dynamic}{/dynamic}', $under($interval), '2'],
    ['numeric names', $values, $under($numbered), 'five.minus.'],

    ['integer keys of objects', '{dynamic l}{*::0} {*::1::0} {*::5} {*::-1} {optional *::0}y{/optional},{/dynamic}', ['l' => [$fixed, $numbered, $container]],
        'a b {*::5} {*::-1} y,{*::0} {*::1::0} {*::5} {*::-1} ,{*::0} {*::1::0} {*::5} {*::-1} ,'],
    ['elements and properties of a derived class', "{dynamic l}{*::0}{*::2::0}{*::1 'null'}{*::3 'none'}{*::own 'own'}{/dynamic}", ['l' => [$row]], 'abnoneown'],
    ['rows at integer keys of an object', '{dynamic n,l}{dynamic n::*::1}{*}{/dynamic}{dynamic *::1}{n::*::0}{/dynamic}{/dynamic}', ['l' => [$fixed]], 'ba'],
    ['a table built anew in the walk of itself', '{dynamic l}{dynamic *}{dynamic l}{*::0}{dynamic *}{[*]}{/dynamic}{/dynamic};{/dynamic}{/dynamic}',
        ['l' => [['num' => $fixed]]], '{*::0}012;{*::0}012;{*::0}012;'],
    ['the same, by its elements', '{dynamic l}{dynamic n,*}{dynamic k}{*::0}{*::1::0}{/dynamic}{n::[*]}{/dynamic}{/dynamic}',
        ['l' => [['num' => $fixed]], 'k' => [$fixed, $fixed]], 'abab0abab1abab2'],
]);

#[AllowDynamicProperties]
class Declared
{
    public mixed $c = 3;
    public ?Spy $spy = null;
}

/** An object of five properties, of which one does a deed; what is walked is what there was at first. */
function acting(string $class, Closure $deed): Closure
{
    return function () use ($class, $deed): ?string {
        $object = new $class();
        $other = 'x';
        foreach (['a' => 1, 'b' => &$other, 'spy' => new Spy(function () use ($object, &$other, $deed) { $deed($object, $other); }), 'c' => 3, 'd' => [4]] as $name => &$value) {
            $name === 'b' ? $object->$name = &$value : $object->$name = $value;
        }
        unset($value);
        return template('{dynamic l}{*::k}{dynamic *}{[*]}={*::0 *}{htmlspecialchars [*]},{/dynamic}{/dynamic}', ['l' => [['num' => $object, 'k' => 'K']]], true);
    };
}

$as_it_was = ['stdClass' => 'Ka=1a,b=xb,spy=spyspy,c=3c,d=4d,', 'Declared' => 'Kc=3c,spy=spyspy,a=1a,b=xb,d=4d,'];
$later = ['stdClass' => 'Ka=1a,b=xb,spy=spyspy,c=3c,d=4d,', 'Declared' => 'Kc=3c,spy=spyspy,a=1a,b=yyb,d=4d,'];
$rows = [];
foreach ([
    'nothing' => [fn() => 1, $as_it_was],
    'removes' => [function (object $object): void {
        unset($object->a, $object->c, $object->d, $object->spy);
    }, $as_it_was],
    'adds' => [function (object $object): void {
        for ($i = 0; $i < 100; $i++) {
            $object->{"new$i"} = [$i];
        }
    }, $as_it_was],
    'replaces' => [function (object $object): void {
        foreach (['a', 'c', 'd', 'spy'] as $name) {
            $object->$name = null;
        }
    }, $as_it_was],
    'replaces through a reference' => [function (object $object, string &$other): void {
        $other = str_repeat('y', 2);
    }, $later],
    'walks the same' => [fn(object $object) => template('{dynamic l}{dynamic *}{[*]}{/dynamic}{/dynamic}', ['l' => [['num' => $object]]], true), $as_it_was],
    'makes references and a copy' => [function (object $object): void {
        foreach ($object as $name => &$value) {
            $value = $name === 'b' || $name === 'spy' ? $value : [clone $object];
        }
    }, $as_it_was],
] as $what => [$deed, $expected]) {
    foreach (array_keys($as_it_was) as $class) {
        $rows[] = ["$what, $class", acting($class, $deed), null, $expected[$class]];
    }
}
$built = function (Closure $deed) use ($fixed): ?string {
    $array = SplFixedArray::fromArray(['a', null, 'c']);
    $array[1] = new Spy(fn() => $deed($array));
    return template('{dynamic l}{*::1}{*::0 \'none\'}{*::2 \'none\'}{/dynamic}', ['l' => [$array]], true)
        . template('{dynamic l}{dynamic *}{*}{/dynamic}{/dynamic}', ['l' => [['num' => $array]]], true);
};
table([
    ...$rows,
    ['a table built anew, made smaller', fn() => $built(fn($array) => $array->setSize(1)), null, 'spyanonea'],
    ['a table built anew, made larger', fn() => $built(fn($array) => $array->setSize(1000)), null, 'spyacaspyc'],
    ['a reference to an object is no table', fn() => template('{dynamic l}{dynamic *}x{/dynamic}{/dynamic}', ['l' => [['num' => &$fixed]]], true), null, ''],
    ['the object goes while it is walked', function (): ?string {
        $rows = [['num' => (object) ['a' => new Spy(function () use (&$rows) { $rows = null; }), 'b' => new Last(fn() => gc_collect_cycles()), 'c' => 'C']]];
        return template('{dynamic l}{dynamic *}{[*]}{*}{/dynamic}{/dynamic}', ['l' => &$rows], true);
    }, null, 'aspyblastcC'],
]);
?>
--EXPECT--
23 rows
18 rows
