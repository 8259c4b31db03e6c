--TEST--
Rows that are SimpleXMLElement objects, whose properties are built anew by each look at them
--EXTENSIONS--
simplexml
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/spy.inc';

$xml = new SimpleXMLElement('<shop open="yes"><name>Lamps</name><item id="1">a<b>x</b></item><item id="2">c</item><none/></shop>');
$loop = '{dynamic l}{dynamic *}{[*]}={*},{/dynamic}{/dynamic}';
$in = fn(object $object): array => ['l' => [['num' => $object]]];
$array = 'Array to string conversion';

/** Walks a document, which changes at each step. */
$changing = function (Closure $deed): ?string {
    $xml = new SimpleXMLElement('<shop><item>a</item><item>b</item><last>c</last></shop>');
    return template('{dynamic l}{dynamic *}{[*]}{dynamic s}{*}{/dynamic}{*::0 \'-\'}{optional *}y{/optional};{/dynamic}{*::0}{/dynamic}',
        ['l' => [['num' => $xml, '0' => $xml]], 's' => [new Spy(fn() => $deed($xml))]], true);
};
$text = 'itemspyay;lastspy-y;';
table([
    ['children as properties', $loop, $in($xml), noted('@attributes=Array,name=Lamps,item=Array,none=,', $array, $array)],
    ['elements as values', '{dynamic l}{*}{htmlspecialchars *},{/dynamic}', ['l' => [$xml->name, $xml->item[1], $xml->item[0]->b]], 'LampsLamps,cc,xx,'],
    ['a value of the data', '{n}{optional n}yes{/optional}{optional none}no{/optional}', ['n' => $xml->name, 'none' => $xml->none], 'Lampsyesno'],
    ['integer keys', '{dynamic l}{*::0}{*::1 \'-\'}{optional *::0}y{/optional},{/dynamic}', ['l' => [$xml->item[1], $xml->name, $xml->none]], 'c-y,Lamps-y,{*::0}-,'],
    ['attributes', $loop, $in($xml->attributes()), noted('@attributes=Array,', $array)],
    ['the same element in three loops', '{dynamic l}{dynamic *}{dynamic k}{dynamic *}{[*]}{/dynamic}{/dynamic},{/dynamic}{/dynamic}',
        ['l' => [['num' => $xml->item[0]]], 'k' => [['num' => $xml->item[0]]]], '@attributesb,@attributesb,'],
    ['elements removed meanwhile', fn() => $changing(function (SimpleXMLElement $xml): void {
        unset($xml->item, $xml->last);
    }), null, $text],
    ['elements added meanwhile', fn() => $changing(fn(SimpleXMLElement $xml) => $xml->addChild('new', 'n')), null, $text],
    ['values replaced meanwhile', fn() => $changing(function (SimpleXMLElement $xml): void {
        $xml->last = 'z';
        (array) $xml;
    }), null, $text],
]);
?>
--EXPECT--
9 rows
