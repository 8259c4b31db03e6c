<?php

// php files.php FOLDER SEED, in the folder that holds node_modules and with tokens.json in FOLDER
// Scripts that people use are cut as a parser of JavaScript cuts them, and these files and random bytes come through
// "template literal" unharmed. The last line is the count.

use TemplateTool\Check\Checker;
use TemplateTool\Page\Script;
use TemplateTool\Syntax\Literal;

require __DIR__ . '/../../tool/autoload.php';

const SAMPLES = 300;
const RANDOM_TEXTS = 3000;

[, $folder, $seed] = $argv;
mt_srand((int) $seed);
$passed = 0;
$faults = [];
$hold = static function (bool $isRight, string $fault) use (&$passed, &$faults): void {
    $isRight ? $passed++ : $faults[] = $fault;
};
$print = static function (string $template) use ($folder): ?string {
    file_put_contents("$folder/page.tpl", $template);
    return template("$folder/page.tpl", []);
};

/** Whether "template literal --check" is right about a text. A name that the data doesn't have prints itself. */
function isJudged(string $text, bool $prints): bool
{
    return (Literal::fault($text) === null) === $prints || ($prints && preg_match('~\{[^{}]+\}~', $text));
}

/** The kind of text at a place; null at its edges, where both sides would be right. */
function kindAt(array $tokens, int $offset): ?string
{
    foreach ($tokens as [$kind, $start, $end]) {
        if ($offset < $start + 1 || $start > $offset) {
            return $offset === $start || $offset > $start ? null : 'outside of quotes';
        }
        if ($offset < $end) {
            return $offset > $start + 1 || $kind === 'quoted' || $kind === 'template literal' ? $kind : null;
        }
        // "${" stands between a text and the code in it.
        if ($offset === $end || ($offset === $end + 1 && $kind === 'template literal')) {
            return null;
        }
    }
    return 'outside of quotes';
}

foreach (json_decode(file_get_contents("$folder/tokens.json"), true) as $file => $tokens) {
    $text = file_get_contents($file);
    $script = new Script('a script');
    $wrong = [];
    $offsets = array_map(static fn(): int => mt_rand(1, strlen($text) - 1), range(1, SAMPLES));
    sort($offsets);
    $read = 0;
    foreach ($offsets as $offset) {
        $script->read(substr($text, $read, $offset - $read));
        $read = $offset;
        $place = $script->place();
        $got = preg_match('~comment|regular expression|template literal|outside of quotes~', $place, $match)
            ? $match[0]
            : 'quoted';
        $wanted = kindAt($tokens, $offset);
        if ($wanted !== null && $wanted !== $got) {
            $wrong[] = "$offset: $wanted, not $got: " . json_encode(substr($text, $offset - 30, 60));
        }
    }
    $hold(!$wrong, "$file: " . implode("\n  ", array_slice($wrong, 0, 3)));
}

$destroyed = 0;
$files = glob('node_modules/{bootstrap/dist/{css,js},jquery/dist,vue/dist}/*.{css,js}', GLOB_BRACE);
foreach ($files as $file) {
    $text = file_get_contents($file);
    $hold($print(Literal::of($text)) === $text, "$file: doesn't come through");
    $prints = @$print($text) === $text;
    $hold(isJudged($text, $prints), "$file: --check is wrong");
    if (!$prints) {
        $destroyed++;
        $said = json_encode((new Checker())->checkText($text, $file), JSON_UNESCAPED_SLASHES);
        $hold(str_contains($said, '\"template literal\"'), "$file: the checker doesn't say how to paste it");
    }
}
$hold(count($files) > 20 && $destroyed > 5, 'hardly any files');
for ($i = 0; $i < RANDOM_TEXTS; $i++) {
    $text = $i % 2 ? implode('', array_map(static fn(): string => chr(mt_rand(0, 255)), range(0, mt_rand(0, 60)))) : '';
    for ($j = mt_rand(0, 30); $j > 0; $j--) {
        $text .= ['{', '}', '{{', '}}', ' ', "\n", "\t", "\v", 'a', 'include x', "\0", "'", "\xC3"][mt_rand(0, 12)];
    }
    // At the border of the pieces in which the engine reads.
    $text = $i % 50 ? $text : str_repeat(' ', 4092 - mt_rand(0, 30)) . $text;
    $shown = substr(json_encode(base64_encode($text)), 0, 200);
    $hold($print(Literal::of($text)) === $text, "random text: $shown");
    $hold(isJudged($text, @$print($text) === $text), "random text with --check: $shown");
}
echo implode("\n", array_slice($faults, 0, 20)), $faults ? "\n" : '';
echo "$passed passed, ", count($faults), " failed\n";
