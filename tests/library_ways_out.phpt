--TEST--
Template\Engine: include path and error handler are the caller's again, and what isn't the engine's goes on
--EXTENSIONS--
template
ctype
mbstring
--FILE--
<?php
require __DIR__ . '/library.inc';
require __DIR__ . '/child.inc';

/** A value whose text is made by code. */
final class Code
{
    public function __construct(private Closure $code)
    {
    }

    public function __toString(): string
    {
        return (string) ($this->code)();
    }
}

put(['page.tpl' => '[{v}]', 'part.tpl' => 'part', 'whole.tpl' => '{include part.tpl}{v}', 'bad.tpl' => "\n{optional v}", 'loop.tpl' => '{dynamic v}{*}{/dynamic}']);
$engine = new Template\Engine(folder());
set_include_path('/somewhere:.');
$heard = [];
$handler = function (int $level, string $message) use (&$heard): bool {
    $heard[] = "$level $message";
    return true;
};
set_error_handler($handler);
$in = fn(Closure $code): array => ['v' => new Code($code)];

foreach ([
    'page' => fn() => $engine->render('page.tpl', ['v' => 1]),
    'include' => fn() => $engine->render('whole.tpl', $in(fn() => get_include_path() === folder())),
    'refusal' => fn() => $engine->render('bad.tpl', []),
    'refusal of text' => fn() => $engine->renderText('{a::}'),
    'array' => fn() => $engine->render('page.tpl', ['v' => []]),
    'array, then a refusal' => fn() => $engine->renderText("{v}\n{a::}", ['v' => []]),
    'warning in code' => fn() => $engine->render('page.tpl', $in(fn() => $undefined)),
    'deprecation in code' => fn() => $engine->render('page.tpl', $in(fn() => strlen(null))),
    'own warning in code' => fn() => $engine->render('page.tpl', $in(fn() => trigger_error('mine', E_USER_WARNING))),
    'exception in code' => fn() => $engine->render('page.tpl', $in(fn() => throw new DomainException('mine'))),
    'page in code' => fn() => $engine->render('page.tpl', $in(fn() => $engine->render('page.tpl', ['v' => 2]) . $undefined)),
    'refusal in code' => fn() => $engine->render('page.tpl', $in(fn() => $engine->render('bad.tpl'))),
    'caught in code' => fn() => $engine->render('page.tpl', $in(function () use ($engine) {
        try {
            return $engine->render('bad.tpl');
        } catch (Template\TemplateError $error) {
            return $error->getLine();
        }
    })),
    'the function in code' => fn() => $engine->render('page.tpl', $in(fn() => template('{a::}', [], true))),
    'another path in code' => fn() => $engine->render('page.tpl', $in(fn() => set_include_path('/other'))),
    'handler of code' => fn() => $engine->render('loop.tpl', ['v' => [new Code(function () {
        set_error_handler(fn() => true);
        $undefined;
        restore_error_handler();
        return 'x';
    }), []]]),
    'a handler is left' => fn() => $engine->render('page.tpl', $in(fn() => set_error_handler(fn() => false) && set_error_handler(null) ? 'x' : 'y')),
    'the handler is taken' => fn() => $engine->renderText("{v}\n{a::}", $in(fn() => restore_error_handler())),
    'no object' => fn() => $engine->render('page.tpl', ['v' => new stdClass()]),
] as $what => $call) {
    try {
        $result = $call();
    } catch (Throwable $error) {
        $result = get_class($error) . ": {$error->getMessage()}";
    }
    $current = set_error_handler(null);
    restore_error_handler();
    echo "$what: ", str_replace(folder(), '~', $result), $heard ? ' | ' : '', implode(', ', $heard);
    echo $current === $handler ? '' : ' | another handler', get_include_path() === '/somewhere:.' ? '' : ' | another path', "\n";
    $heard = [];
}

// A handler that throws ends the call; one that leaves a message to PHP gets it printed.
set_error_handler(fn(int $level, string $message) => throw new ErrorException($message));
[$text, $messages] = outcome(function () use ($engine): string {
    restore_error_handler();
    try {
        return $engine->render('loop.tpl', ['v' => [1, [], new Code(fn() => print 'not reached')]]);
    } finally {
        set_error_handler(null);
    }
});
echo 'throwing handler: ', implode(', ', $messages), "\n";
restore_error_handler();

$start = 'require "' . __DIR__ . '/library.inc"; $engine = new Template\Engine(".");
    final class Code { public function __toString(): string { %s } }
    set_include_path("/mine"); %s
    register_shutdown_function(fn() => print " " . get_include_path() . (set_error_handler(null) ? " handler" : " none"));
    echo $engine->render("page.tpl", ["v" => new Code()]), $engine->renderText("{v}", ["v" => []]);';
$handle = 'set_error_handler(fn($level, $message) => print "heard: $message ");';
foreach ([
    'exit' => ['exit;', $handle],
    'memory' => ['return str_repeat("x", 100000000);', $handle, '-d memory_limit=8M'],
    'heard' => ['trigger_error("mine"); return "v";', $handle],
    'no handler' => ['trigger_error("mine"); return "v";', ''],
    'handler that leaves it to PHP' => ['trigger_error("mine"); return "v";', 'set_error_handler(fn() => false);'],
] as $what => $row) {
    echo "$what: ", preg_replace('/ \(tried .*?\)| in \S+ on line \d+|\s*\n/', '', child(sprintf($start, $row[0], $row[1]), $row[2] ?? '')), "\n";
}

// What a call costs besides the function, at best: at most 2 microseconds.
set_include_path(folder());
$more = INF;
for ($round = 0; $round < 200 && watcher() === ''; $round++) {
    $times = [];
    foreach ([fn() => template('part.tpl', []), fn() => $engine->render('part.tpl')] as $call) {
        $start = hrtime(true);
        for ($i = 0; $i < 20; $i++) {
            $call();
        }
        $times[] = hrtime(true) - $start;
    }
    $more = min($more, ($times[1] - $times[0]) / 20);
}
echo $more <= 2000 || watcher() !== '' ? 'cheap' : "$more ns more than the function", "\n";
?>
--EXPECT--
page: [1]
include: part1
refusal: Template\TemplateError: Missing closing tag in bad.tpl
refusal of text: Template\TemplateError: Bad formated parameter'a::': too many : in {a::}
array: [Array] | 2 Array to string conversion
array, then a refusal: Template\TemplateError: Bad formated parameter'a::': too many : in {v}
{a::} | 2 Array to string conversion
warning in code: [] | 2 Undefined variable $undefined
deprecation in code: [0] | 8192 strlen(): Passing null to parameter #1 ($string) of type string is deprecated
own warning in code: [1] | 512 mine
exception in code: DomainException: mine
page in code: [[2]] | 2 Undefined variable $undefined
refusal in code: Template\TemplateError: Missing closing tag in bad.tpl
caught in code: [2]
the function in code: [] | 2 Bad formated parameter'a::': too many : in {a::}
another path in code: [~]
handler of code: xArray | 2 Array to string conversion
a handler is left: [x]
the handler is taken: Template\TemplateError: The template was refused, but an error handler of the data took the message | 2 Bad formated parameter'a::': too many : in {v}
{a::}
no object: Error: Object of class stdClass could not be converted to string
throwing handler: ErrorException: Array to string conversion
exit: /mine handler | exit 0
memory: Fatal error: Allowed memory size of 8388608 bytes exhausted /mine handler | exit 255
heard: heard: mine [v]heard: Array to string conversion Array /mine handler | exit 0
no handler: Notice: mine[v]Warning: Array to string conversionArray /mine none | exit 0
handler that leaves it to PHP: Notice: mine[v]Warning: Array to string conversionArray /mine handler | exit 0
cheap
