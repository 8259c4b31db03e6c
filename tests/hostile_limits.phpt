--TEST--
Little stack, little memory: deep nesting and long chains of includes end in an error, too much text in PHP's own
--EXTENSIONS--
template
--FILE--
<?php
require __DIR__ . '/table.inc';
require __DIR__ . '/child.inc';

// chain://N is a file that includes chain://N+1, up to the file whose number is in $last.
$prelude = <<<'PHP'
    class Chain
    {
        public static int $last = 0;
        public $context;
        private string $text;

        public function stream_open(string $path): bool
        {
            $number = (int) substr($path, 8);
            $this->text = $number < self::$last ? '<{include chain://' . ($number + 1) . '}>' : 'x';
            return true;
        }

        public function stream_read(int $count): string
        {
            [$text, $this->text] = [$this->text, ''];
            return $text;
        }

        public function stream_eof(): bool
        {
            return $this->text === '';
        }
    }
    stream_wrapper_register('chain', Chain::class);

    class Deep
    {
        public static int $levels = 0;

        public function __toString(): string
        {
            self::$levels++;
            return (string) template('{dynamic l}{*}{/dynamic}', ['l' => [$this]], true);
        }
    }

    function short(?string $text): string
    {
        return $text === null ? substr(error_get_last()['message'], 0, 25) : (strlen($text) > 30 ? strlen($text) . ' bytes' : $text);
    }

    function nested(int $levels, string $opening, string $closing): string
    {
        return short(@template(str_repeat($opening, $levels) . 'x' . str_repeat($closing, $levels), ['v' => 1, 'l' => [1]], true));
    }

    function chain(int $files): string
    {
        Chain::$last = $files;
        return short(@template('chain://0', []));
    }

    function all(): void
    {
        [$some, $most] = getenv('TEST_WATCHER') ? [100, 50000] : [600, 1000000];
        foreach ([$some, $most] as $levels) {
            echo nested($levels, '{optional v}', '{/optional}'), ',', nested($levels, '{optional none}', '{/optional}'), ',',
                nested($levels, '{dynamic l}', '{/dynamic}'), ',', nested($levels, '{dynamic none}', '{/dynamic}'), ',', nested(intdiv($levels, 2), '{dynamic l}{optional *}', '{/optional}{/dynamic}'), '; ';
        }
        echo chain($some), ',', chain($most), '; ';
        echo @template('{v}', ['v' => new Deep()], true), Deep::$levels > 20 ? 'deep' : Deep::$levels, ' ';
    }
    PHP;
$deep = 'Blocks nested too deeply ';
$all = "x,,x,,x; $deep,$deep,$deep,$deep,$deep; " . (watcher() ? 201 : 1201) . " bytes,$deep; deep";
$run = fn(string $code, string $limits = '', string $options = ''): Closure => fn() => child("$prelude\n$code", "-d memory_limit=1G $options", $limits);
$fiber = '$fiber = new Fiber("all"); $fiber->start();';
table([
    ['usual stack', $run('all();'), null, "$all | exit 0"],
    ['small stack', $run('all();', 'ulimit -s 1024;'), null, "$all | exit 0"],
    ...array_map(fn($size) => ["a stack of $size KB", $run(
        'echo nested(5, "{dynamic l}", "{/dynamic}"), " ", nested(600, "{dynamic l}", "{/dynamic}");',
        watcher() ? '' : "ulimit -s $size;"
    ), null, 'x ' . (watcher() ? 'x ' : $deep) . '| exit 0'], [96, 128, 256]),
    ...array_map(fn($size) => ["a Fiber of $size KB", $run(
        '$fiber = new Fiber(fn() => print(nested(5, "{dynamic l}", "{/dynamic}") . " " . nested(100000, "{dynamic l}", "{/dynamic}"))); $fiber->start();',
        '',
        watcher() ? '' : "-d fiber.stack_size={$size}K"
    ), null, "x $deep| exit 0"], [96, 128]),
    ['Fiber', $run($fiber), null, "$all | exit 0"],
    ['Fiber under a small stack', $run($fiber, 'ulimit -s 1024;'), null, "$all | exit 0"],
    ['Fiber in a Fiber', $run("\$outer = new Fiber(function () { $fiber }); \$outer->start();"), null, "$all | exit 0"],
    ['a chain of 5,000 files', $run('echo chain(5000);', watcher() ? 'ulimit -s 65536;' : ''), null, '10001 bytes | exit 0'],
    // The stack that valgrind and an emulator make has a limit all the same.
    ['many levels without a limit of the stack', $run('$levels = in_array(getenv("TEST_WATCHER"), ["valgrind", "emulator"]) ? 5000 : 100000;
        echo nested($levels, "{dynamic l}", "{/dynamic}"), nested($levels, "{optional none}", "{/optional}");', 'ulimit -s unlimited;'), null, 'x | exit 0'],
]);

// What a template makes PHP hold counts for memory_limit; afterwards it is given back. (PHP 8.5 and later give back nothing
// before the request ends, whichever function met the limit; PHP before 8.2.35 holds the arguments: up to 8 MB beside $long.)
$most = PHP_VERSION_ID < 80500 ? 14000000 : PHP_INT_MAX;
$limited = fn(string $call): Closure => fn() => preg_replace('/^Fatal error: Allowed memory size of 33554432 bytes exhausted .*? on line \d+\s*/s', 'F ', child('
    ini_set("memory_limit", "32M");
    $before = memory_get_usage();
    register_shutdown_function(function () use ($before): void {
        echo memory_get_usage() - $before < ' . $most . ' ? "" : "memory is left", template("{v}", ["v" => "V"], true);
    });
    $l = range(1, 100); $long = str_repeat("a", 1 << 22);
    ' . $call));
table([
    ['output of loops', $limited('template("{dynamic l}{dynamic l}{dynamic l}{dynamic l}text{/dynamic}{/dynamic}{/dynamic}{/dynamic}", ["l" => $l], true);'), null, 'F V | exit 255'],
    ['values of the data', $limited('template(str_repeat("{v}", 100), ["v" => $long], true);'), null, 'F V | exit 255'],
    ['escaped values', $limited('template("{dynamic l}{rawurlencode *}{/dynamic}", ["l" => array_fill(0, 99, $long)], true);'), null, 'F V | exit 255'],
    ['escaping that grows', $limited('template("{htmlspecialchars v}", ["v" => str_repeat("<", 1 << 23)], true);'), null, 'F V | exit 255'],
    ['many blocks', $limited('template("{dynamic l}" . str_repeat("{*::a *::b}", 1 << 19) . "{/dynamic}", ["l" => $l], true);'), null, 'F V | exit 255'],
    ['a long reference', $limited('template("{dynamic l}{*" . str_repeat("::a", 1 << 21) . "}{/dynamic}", ["l" => $l], true);'), null, 'F V | exit 255'],
    ['a large file', $limited('file_put_contents("large.tpl", str_repeat($long, 10)); unset($long); template("large.tpl", []);'), null, 'F V | exit 255'],
    ['files included again and again', $limited('file_put_contents("large.tpl", $long); template(str_repeat("{include large.tpl}", 10), [], true);'), null, 'F V | exit 255'],
]);
?>
--EXPECT--
12 rows
8 rows
