--TEST--
Closing tags: every opening against every closing, missing ones, the innermost block decides
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';

$d = ['v' => 'V', 'l' => [1]];
$opened = ['' => '', 'optional v' => 'optional', '!optional v' => 'optional', 'optional *' => 'optional', 'optional x' => 'optional',
    'dynamic l' => 'dynamic', 'dynamic x' => 'dynamic', 'dynamic n,*::x' => 'dynamic', 'rdynamic l' => 'rdynamic', 'rdynamic x' => 'rdynamic'];

$rows = [];
foreach ($opened as $opening => $kind) {
    $before = $opening === '' ? '' : "{{$opening}}";
    foreach (['optional', 'dynamic', 'rdynamic'] as $closing) {
        if ($closing !== $kind) {
            $rows[] = ["$opening, /$closing", "$before{/$closing}{/$kind}", $d, fails("Unexpected closing $closing tag in @")];
            $rows[] = ["$opening, /$closing in a block", "{optional x}{/optional}{optional v}$before{/$closing}", $d, $opening . $closing === 'optional'
                ? '' : fails("Unexpected closing $closing tag in @")];
        }
    }
    if ($opening !== '') {
        $rows[] = ["$opening left open", "$before{v}", $d, fails('Missing closing tag in @')];
        $rows[] = ["$opening left open in a block", "{optional v}$before{/$kind}", $d, fails('Missing closing tag in @')];
    }
}
table($rows);
table([
    ['one too many', '{optional v}{/optional}{/optional}', $d, fails('Unexpected closing optional tag in @')],
    ['crossed', '{dynamic l}{optional v}{/dynamic}{/optional}', $d, fails('Unexpected closing dynamic tag in @')],
    ['behind a loop', '{optional v}{rdynamic l}{/rdynamic}{/rdynamic}', $d, fails('Unexpected closing rdynamic tag in @')],
    ['well nested', '{optional v}1{dynamic l}2{rdynamic l}3{!optional x}4{/optional}5{/rdynamic}6{/dynamic}7{/optional}8', $d, '12345678'],
    ['a negated closing tag is a variable', '{optional v}{/!optional}', $d, fails('Missing closing tag in @')],
]);
?>
--EXPECT--
60 rows
5 rows
