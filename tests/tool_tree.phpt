--TEST--
template tree: blocks, references, includes, what the data settles
--EXTENSIONS--
template
ctype
mbstring
intl
--SKIPIF--
<?php require __DIR__ . '/tool.inc'; skipWithoutConsole(); ?>
--FILE--
<?php
require __DIR__ . '/tool.inc';

put([
    'page.tpl' => <<<'TPL'
        {name user::nick 'no "one"'}{'text'}{q}{*::x name}
        {dynamic row,rows}{row::[*]}{*::a::0 name}
          {optional row::* 'x y'}{htmlspecialchars *}{/optional}{include part.tpl}
        {/dynamic}{rdynamic none}{/rdynamic}
        {!optional user 3}{htmlspecialchars name}{/optional}{optional user}{/optional}
        {include part.tpl}{include gone.tpl}{include file}{include page.tpl}
        TPL,
    'part.tpl' => "{include page.tpl}{rawurlencode a::b}",
    'other.tpl' => '{é',
    'bad.tpl' => "{a::}{optional b}{c}",
    'deep.tpl' => str_repeat('{optional a}', 300) . str_repeat('{/optional}', 300),
    'data.json' => '{"name": "A <b> ' . str_repeat('é', 50) . '", "user": 3, "rows": [1, 2], "file": "other.tpl", "a": {"b": "c d"}}',
]);
foreach (['page.tpl', 'page.tpl data.json', 'page.tpl -s name=x', 'bad.tpl'] as $arguments) {
    [$status, $output, $error] = tool("tree $arguments");
    echo "== $arguments: $status $error$output";
}

[$status, $json] = tool('tree page.tpl data.json --format json');
$tree = json_decode($json, true);
echo json_encode($tree[0]), "\n", json_encode(array_slice($tree[4]['children'], 2)), "\n";
[$status, $json] = tool('tree deep.tpl --format=json');
echo $status, ' ', substr_count($json, '"tag"'), "\n";

commands([
    ['tree none.tpl', 2, '', "template: none.tpl: no such file\n"],
    ['tree page.tpl -f xml', 2, '', "template: --format xml: choose one of text, json\n"],
    ['tree page.tpl none.json', 2, '', "template: none.json: no such file\n"],
]);
?>
--EXPECT--
== page.tpl: 1 template: page.tpl has 2 errors; "template check page.tpl" tells more
page.tpl
   1 ├─ {name user::nick 'no "one"'}  path name, or path user > nick, or the text "no "one""
   1 ├─ {'text'}                      the text "text"
   1 ├─ {q}                           path q
   1 ├─ {*::x name}                   element of the innermost loop > x, or path name
   2 ├─ {dynamic row,rows}            loop "row", path rows
   2 │  ├─ {row::[*]}                 key of "row"
   2 │  ├─ {*::a::0 name}             element of the innermost loop > a > 0, or path name
   3 │  ├─ {optional row::* 'x y'}    element of "row", compared with "'x y'"
   3 │  │  └─ {htmlspecialchars *}    element of the innermost loop
   3 │  └─ {include part.tpl}         part.tpl
   1 │     ├─ {include page.tpl}      (a circle: this file is being read already)
   1 │     └─ {rawurlencode a::b}     path a > b
   4 ├─ {rdynamic none}               path none
   5 ├─ {!optional user 3}            path user, compared with "3"
   5 │  └─ {htmlspecialchars name}    path name
   5 ├─ {optional user}               path user
   6 ├─ {include part.tpl}            part.tpl (shown above)
   6 ├─ {include gone.tpl}            (no such file)
   6 ├─ {include file}                (no such file)
   6 └─ {include page.tpl}            (a circle: this file is being read already)
== page.tpl data.json: 1 template: page.tpl has 2 errors; "template check page.tpl" tells more
page.tpl
   1 ├─ {name user::nick 'no "one"'}  path name, or path user > nick, or the text "no "one"": prints "A <b> éééééééééééééééééééééééééééééééééé…"
   1 ├─ {'text'}                      the text "text": prints "text"
   1 ├─ {q}                           path q: finds nothing
   1 ├─ {*::x name}                   element of the innermost loop > x, or path name
   2 ├─ {dynamic row,rows}            loop "row", path rows: 2 rounds
   2 │  ├─ {row::[*]}                 key of "row"
   2 │  ├─ {*::a::0 name}             element of the innermost loop > a > 0, or path name
   3 │  ├─ {optional row::* 'x y'}    element of "row", compared with "'x y'"
   3 │  │  └─ {htmlspecialchars *}    element of the innermost loop
   3 │  └─ {include part.tpl}         part.tpl
   1 │     ├─ {include page.tpl}      (a circle: this file is being read already)
   1 │     └─ {rawurlencode a::b}     path a > b: prints "c%20d"
   4 ├─ {rdynamic none}               path none: 0 rounds
   5 ├─ {!optional user 3}            path user, compared with "3": hidden
   5 │  └─ {htmlspecialchars name}    path name: prints "A &lt;b&gt; éééééééééééééééééééééééééééé…"
   5 ├─ {optional user}               path user: shown
   6 ├─ {include part.tpl}            part.tpl (shown above)
   6 ├─ {include gone.tpl}            (no such file)
   6 ├─ {include file}                other.tpl
   1 │  └─ {é                         path é: finds nothing
   6 └─ {include page.tpl}            (a circle: this file is being read already)
== page.tpl -s name=x: 1 template: page.tpl has 2 errors; "template check page.tpl" tells more
page.tpl
   1 ├─ {name user::nick 'no "one"'}  path name, or path user > nick, or the text "no "one"": prints "x"
   1 ├─ {'text'}                      the text "text": prints "text"
   1 ├─ {q}                           path q: finds nothing
   1 ├─ {*::x name}                   element of the innermost loop > x, or path name
   2 ├─ {dynamic row,rows}            loop "row", path rows: 0 rounds
   2 │  ├─ {row::[*]}                 key of "row"
   2 │  ├─ {*::a::0 name}             element of the innermost loop > a > 0, or path name
   3 │  ├─ {optional row::* 'x y'}    element of "row", compared with "'x y'"
   3 │  │  └─ {htmlspecialchars *}    element of the innermost loop
   3 │  └─ {include part.tpl}         part.tpl
   1 │     ├─ {include page.tpl}      (a circle: this file is being read already)
   1 │     └─ {rawurlencode a::b}     path a > b: prints nothing
   4 ├─ {rdynamic none}               path none: 0 rounds
   5 ├─ {!optional user 3}            path user, compared with "3": shown
   5 │  └─ {htmlspecialchars name}    path name: prints "x"
   5 ├─ {optional user}               path user: hidden
   6 ├─ {include part.tpl}            part.tpl (shown above)
   6 ├─ {include gone.tpl}            (no such file)
   6 ├─ {include file}                (no such file)
   6 └─ {include page.tpl}            (a circle: this file is being read already)
== bad.tpl: 1 template: bad.tpl has 2 errors; "template check bad.tpl" tells more
bad.tpl
   1 ├─ {a::}         (Bad formated parameter'a::': too many :)
   1 └─ {optional b}  path b (never closed)
   1    └─ {c}        path c
{"tag":"{name user::nick 'no \"one\"'}","kind":"plain","file":"page.tpl","line":1,"column":1,"offset":0,"length":28,"references":[{"text":"name","type":"path","namespace":"","indexes":["name"]},{"text":"user::nick","type":"path","namespace":"","indexes":["user","nick"]}],"fallback":"no \"one\"","settled":"prints \"A <b> \u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u2026\"","children":[]}
[{"tag":"{optional row::* 'x y'}","kind":"optional","file":"page.tpl","line":3,"column":3,"offset":96,"length":54,"references":[{"text":"row::*","type":"element","namespace":"row","indexes":[]}],"compared":"'x y'","children":[{"tag":"{htmlspecialchars *}","kind":"htmlspecialchars","file":"page.tpl","line":3,"column":26,"offset":119,"length":20,"references":[{"text":"*","type":"element","namespace":"","indexes":[]}],"children":[]}]},{"tag":"{include part.tpl}","kind":"include","file":"page.tpl","line":3,"column":57,"offset":150,"length":18,"references":[{"text":"part.tpl","type":"path","namespace":"","indexes":["part.tpl"]}],"included":"part.tpl","children":[{"tag":"{include page.tpl}","kind":"include","file":"part.tpl","line":1,"column":1,"offset":0,"length":18,"references":[{"text":"page.tpl","type":"path","namespace":"","indexes":["page.tpl"]}],"note":"a circle: this file is being read already","children":[]},{"tag":"{rawurlencode a::b}","kind":"rawurlencode","file":"part.tpl","line":1,"column":19,"offset":18,"length":19,"references":[{"text":"a::b","type":"path","namespace":"","indexes":["a","b"]}],"settled":"prints \"c%20d\"","children":[]}]}]
0 200
3 commands
