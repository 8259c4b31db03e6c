<?php

/** The command line of a PHP without configuration files, as a production server would set it up. */
function phpCommand(array $modules, bool $opcache = true): array
{
    static $builtIn;
    $builtIn ??= explode("\n", shell_exec(escapeshellarg(PHP_BINARY) . ' -n -m'));
    $command = [PHP_BINARY, '-n', '-d', 'memory_limit=-1', '-d', 'zend.assertions=-1', '-d', 'display_errors=stderr',
        '-d', 'error_reporting=' . (E_ALL & ~E_DEPRECATED), '-d', 'date.timezone=UTC'];
    if ($opcache) {
        array_push(
            $command,
            '-d',
            'zend_extension=opcache',
            '-d',
            'opcache.enable_cli=1',
            '-d',
            'opcache.validate_timestamps=0',
            '-d',
            'opcache.file_update_protection=0'
        );
    }
    foreach ([...array_diff(['ctype', 'mbstring', 'tokenizer'], $builtIn), ...$modules] as $module) {
        array_push($command, '-d', "extension=$module");
    }
    return $command;
}

/** The modules that an engine needs beyond PHP's own. */
function engineModules(string $engine): array
{
    return match ($engine) {
        'template' => [MODULE],
        'yardstick' => [YARDSTICK],
        default => [],
    };
}

/** Runs a command to its end and returns what it printed; ends the benchmark when it fails. */
function output(array $command, array $environment = []): string
{
    $process = proc_open($command, [1 => ['pipe', 'w']], $pipes, null, $environment + getenv());
    $text = stream_get_contents($pipes[1]);
    if (proc_close($process) !== 0) {
        fail('this command failed: ' . implode(' ', $command));
    }
    return $text;
}

/** A process that renders pages with one engine, and is told over a pipe which and how often. */
class Worker
{
    private $process;
    private array $pipes = [];

    public function __construct(private string $engine)
    {
        $command = [...phpCommand(engineModules($engine)), dirname(__DIR__) . '/worker.php', $engine, BUILD];
        $this->process = proc_open($command, [['pipe', 'r'], ['pipe', 'w']], $this->pipes);
    }

    /** Renders $page $calls times, stores the last text in $file; returns the nanoseconds of all calls. */
    public function time(string $page, int $calls, string $file = ''): int
    {
        fwrite($this->pipes[0], "$page $calls $file\n");
        return (int) (fgets($this->pipes[1]) ?: fail("$this->engine could not render the page $page"));
    }

    public function __destruct()
    {
        array_map('fclose', $this->pipes);
        proc_close($this->process);
    }
}

function median(array $values): float
{
    sort($values);
    $half = intdiv(count($values), 2);
    return count($values) % 2 ? $values[$half] : ($values[$half - 1] + $values[$half]) / 2;
}
