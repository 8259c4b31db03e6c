--TEST--
Objects under "num": the property table, its order and keys
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

class Base
{
    private $hidden = 'base';
    public $first = 'F';
}

#[AllowDynamicProperties]
class Item extends Base
{
    public static $static = 'static';
    public $a = 'A';
    protected $b = 'B';
    private $c = 'C';
    public int $never;
    public $gone = 'G';
    public $last = null;
}

$text = 'linked';
$item = new Item();
$item->dynamic = 'D';
$item->{'7'} = 'seven';
unset($item->gone);
$item->a = &$text;
$late = new class { public int $x; public string $y; public array $z = ['k' => 'K']; };
$late->y = 'Y';
$bare = new class { public int $x; public string $y; };
$numbers = (object) ['x', 'y', 'n' => 'z'];
$emptied = (object) ['a' => 1];
unset($emptied->a);

$loop = '{dynamic g}{dynamic n,*::r}[{[*]}={*}]{/dynamic}{/dynamic}';
$back = '{dynamic g}{rdynamic *::r}[{[*]}={*}]{/rdynamic}{/dynamic}';
$in = fn(object $object): array => ['g' => [['r' => ['num' => $object, 'x' => 'unseen']]]];
$array = 'Array to string conversion';

table([
    ['all kinds of properties', $loop, $in($item), '[=base][first=F][a=linked][=B][=C][last=][dynamic=D][7=seven]'],
    ['in reverse', $back, $in($item), '[7=seven][dynamic=D][last=][=C][=B][a=linked][first=F][=base]'],
    ['nobody has asked for the properties before', fn() => template("$loop$back", $in(new Item()), true), null,
        '[=base][first=F][a=A][=B][=C][gone=G][last=][last=][gone=G][=C][=B][a=A][first=F][=base]'],
    ['only uninitialised', $loop . $back, $in($bare), ''],
    ['uninitialised first', $loop . $back, $in($late), noted('[y=Y][z=Array][z=Array][y=Y]', $array, $array)],
    ['numbered properties', $loop, $in($numbers), '[0=x][1=y][n=z]'],
    ['no properties', $loop, $in(new stdClass()), ''],
    ['none left', $loop . $back, $in($emptied), ''],
    ['integer keys of a container', fn() => template($loop, $in(SplFixedArray::fromArray(['p', 'q'])), true), null, '[0=p][1=q]'],
    ['what a container holds is no property', $loop, $in(new ArrayObject(['p'])), ''],
    ['compared keys', '{dynamic g}{dynamic n,*::r}{optional [*] 7}{*}{/optional}{optional n::[*] first}{*}{/optional}{/dynamic}{/dynamic}', $in($item), 'Fseven'],
    ['a key with zero bytes is still found', "{dynamic g}{dynamic *::r}{[*] 'none'}{/dynamic}{/dynamic}", $in($item), 'firstalastdynamic7'],
    ['element of a property', '{dynamic g}{dynamic n,*::r}{n::*::k \'-\'}{dynamic *}{*}{/dynamic}{/dynamic}{/dynamic}', $in($late), '-KK'],
    ['one object twice', '{dynamic g}{dynamic *::r}{*}{/dynamic}{dynamic *::s}{*}{/dynamic}{/dynamic}',
        ['g' => [['r' => ['num' => $numbers], 's' => ['num' => $numbers]]]], 'xyzxyz'],
    ['an object as an element is no table', '{dynamic l}<{dynamic *}x{/dynamic}{dynamic *::r}x{/dynamic}>{/dynamic}', ['l' => [$item, ['r' => $item]]], '<><x>'],
]);
?>
--EXPECT--
15 rows
