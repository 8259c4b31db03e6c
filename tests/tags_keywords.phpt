--TEST--
Keywords: prefix match, case, what stands before and behind, white space around the argument
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

put(['part.tpl' => 'P', 'd.tpl' => 'D']);
$d = ['v' => "<'>", 'l' => ['a', 'b'], 's' => ['c'], 'V' => 'upper', 'nameinclude' => 'N', ':v' => 'colon'];

table([
    ['no separator: include', '{includepart.tpl}', $d, 'P'],
    ['a longer name is cut all the same', '{included.tpl}', $d, 'D'],
    ['no separator: optional', '{optionalv}y{/optional}{!optionalv}n{/optional}', $d, 'y'],
    ['no separator: dynamic', '{dynamicl}{*}{/dynamic}{rdynamicl}{*}{/rdynamic}', $d, 'abba'],
    ['a name that begins with a keyword', '{dynamics}{*}{/dynamics}', $d, 'c'],
    ['no separator: escaping', '{addslashesv}{htmlentitiesv}{htmlspecialcharsv}{rawurlencodev}', $d,
        "<\\'>&lt;'&gt;&lt;'&gt;%3C%27%3E"],
    ['a colon is part of the argument', '{addslashes:v}', $d, 'colon'],
    ['several blanks and line feeds', "{addslashes \t\n v\n}", $d, "<\\'>"],
    ['case counts', '{Include part.tpl}{OPTIONAL v}{Dynamic}{addSlashes v}', $d,
        "{Include part.tpl}<'>{Dynamic}<'>"],
    ['case counts in names too', '{V}{v}', $d, "upper<'>"],
    ['one letter short', '{htmlentitie v}{rawurlencod}{includ part.tpl}', $d, "<'>{rawurlencod}{includ part.tpl}"],
    ['a blank inside a keyword', '{! optional v}{/ optional}', $d, "<'>{/ optional}"],
    ['white space before a keyword', "{\vinclude part.tpl}{\v /optional}{\f\vdynamic x}", $d,
        '{include part.tpl}{/optional}{dynamic x}'],
    ['keyword at the end of a name', '{nameinclude}', $d, 'N'],
    ['closing tags that are none', '{/include}{/addslashes}{/!optional}{!dynamic}{!/optional}', $d,
        '{/include}{/addslashes}{/!optional}{!dynamic}{!/optional}'],
    ['anything may follow a closing keyword', '{optional v}a{/optionals} b{!optional x}c{/optional x::: \' *}', $d, 'a bc'],
    ['white space behind a closing keyword', "{dynamic l}{*}{/dynamic \t\v}{rdynamic l}{*}{/rdynamic\n}", $d, 'abba'],
    ['white space around a name', "{v \t\r\n\v\f}{\v\tv}", $d, "<'><'>"],
    ['only white space', "{\v \t\n}", $d, '{}'],
    ['a no-break space is no white space', "{\xC2\xA0v}{v\xA0}", $d, "{\xC2\xA0v}{v\xA0}"],
    ['escaping tags without argument', '{addslashes}{htmlentities }{htmlspecialchars}{rawurlencode}', $d, ''],
    ['escaping tags of the empty key', '{addslashes}{htmlentities }{htmlspecialchars}{rawurlencode}', ['' => "'"],
        "\\'''%27"],
    ['include of a name that finds no file', '{includes}{include none}', $d, ''],
]);
?>
--EXPECT--
23 rows
