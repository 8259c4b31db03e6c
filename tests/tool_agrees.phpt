--TEST--
The checker and the engine agree: on made-up templates, on the examples, on keywords; checking opens no stream
--EXTENSIONS--
template
ctype
mbstring
intl
--FILE--
<?php
require __DIR__ . '/tool.inc';
require toolRoot() . '/tool/autoload.php';

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Syntax\Kind;
use TemplateTool\Check\Options;

folder();
// What the engine says against a template, with and without data that makes most of it valid, is among the findings,
// and where there is an error among the findings the engine says something. Some parts come from other languages.
$parts = ['{optional ', '{!optional ', '{/optional}', '{dynamic ', '{rdynamic ', '{/dynamic}', '{/rdynamic}', '{include ',
    '{addslashes ', '{htmlspecialchars ', '{', '}', '}', '}', '}}', '{{', ' ', 'a', 'b', 'x,', 'y,', 'r', '*', '[*]', '::',
    '::', "'", 'text', "\n", '7', '.*', "\t", '{name}', '{r::*::a}', "\xC3\xA9", "\v", '{if ', '{else}', '{% ', ' %}', '{{ ',
    ' }}', '$a', '|r', '.b', '->', '==', '{/!optional}', '{ optional a}', '<?php', '<style>', '<script>', 'in ', '{$', "\u{FEFF}"];
// With the second every list is walked and nothing else is found: what is only read then is read.
$given = [[], ['a' => ['b' => 1, 'r' => [1]], 'r' => [['a' => 1], ['b' => 2]], 'b' => 's', 'x' => [1]], ['r' => [[]], 'a' => [[]]]];
$checker = new Checker();
$single = static fn(string $message): string => preg_replace('/\{+/', '{', $message);
mt_srand(2024);
$errors = 0;
$templates = watcher() === 'valgrind' ? 800 : 8000;
for ($i = 0; $i < $templates; $i++) {
    for ($template = '', $k = mt_rand(1, 16); $k > 0; $k--) {
        $template .= $parts[mt_rand(0, count($parts) - 1)];
    }
    $findings = array_filter($checker->checkText($template), fn(Finding $finding) => $finding->isError());
    $isRefused = false;
    foreach ($given as $data) {
        [$text, $messages] = outcome(fn() => template($template, $data, true));
        if ($text === null) {
            $errors++;
            $isRefused = true;
            // For a brace inside a tag, findings quote one brace where the engine quotes one for each byte.
            $known = array_filter($findings, fn(Finding $finding) =>
                str_starts_with($single(end($messages)) . ' in ', $single($finding->message) . ' in '));
            $known || print(json_encode($template) . ': ' . end($messages) . "\n");
        }
    }
    $isRefused || !$findings || print(json_encode($template) . ' is taken, in spite of ' . reset($findings)->message . "\n");
}
echo $errors > $templates * 3 / 8 ? "errors found\n" : "only $errors errors\n";

// Errors that depend on the data are always reported.
echo count(array_filter(
    ['{dynamic r,x}{dynamic r,y}{/dynamic}{/dynamic}', '{* b:::c}', '{a b:::c}'],
    fn($template) => !array_filter($checker->checkText($template), fn($finding) => $finding->isError())
)), " of 3 with a late error\n";

foreach (Kind::cases() as $kind) {
    // A keyword makes an escaping tag vanish, a section an error; a plain tag stands as it is.
    [$text] = outcome(fn() => template('{' . $kind->value . ' x}', [], true));
    if (($text === '{ x}') !== ($kind === Kind::Plain)) {
        echo "$kind->value is no keyword\n";
    }
}
// The editors' grammar knows the same ones.
$grammar = file_get_contents(toolRoot() . '/editors/vscode-template/syntaxes/template.tmLanguage.json');
preg_match_all('~\{?\)\((/\(\?:optional\|r\?dynamic\)|[!?a-z|]+)\)~', $grammar, $matches);
echo implode(' ', array_unique($matches[1])), "\n";

$shop = glob(toolRoot() . '/examples/shop/templates/*.tpl');
foreach ($checker->checkFiles($shop) as $finding) {
    // Which folder is the include path isn't known here.
    $finding->name === 'missing-include' || str_contains($finding->name, '-loop') || print(json_encode($finding) . "\n");
}
echo count($shop) > 5 ? "examples checked\n" : "no examples\n";

// Streams, devices and pipes would hang, or be read.
final class Watched
{
    public $context;

    public function stream_open(string $path): bool
    {
        echo "opened $path\n";
        return false;
    }
}
stream_wrapper_register('watched', Watched::class);
exec('mkfifo pipe');
put(['names.tpl' => '{include watched://a}{include data:,x}{include pipe}{include /dev/zero}{include /dev/stdin}{include f}']);
$checker = new Checker(new Options(['', '.'], data: ['f' => 'watched://b']));
foreach ([...$checker->checkFiles(['names.tpl']), ...$checker->checkText(file_get_contents('names.tpl'))] as $finding) {
    echo "$finding->column $finding->name\n";
}
?>
--EXPECT--
errors found
0 of 3 with a late error
/(?:optional|r?dynamic) include !?optional r?dynamic addslashes|htmlentities|htmlspecialchars|rawurlencode
examples checked
48 missing-include
62 missing-include
81 missing-include
48 missing-include
62 missing-include
81 missing-include
