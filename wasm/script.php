<?php

// Runs a reader's script in place of a page.

/**
 * One script, run as its last deed by a request. The answer is what its output becomes when PHP hands that out: behind an
 * exit, the script's shutdown functions and its destructors.
 */
final class Script
{
    private const FOLDER = '/page/';
    private const KINDS = [
        E_NOTICE => 'Notice: ',
        E_USER_NOTICE => 'Notice: ',
        E_DEPRECATED => 'Deprecated: ',
        E_USER_DEPRECATED => 'Deprecated: ',
    ];

    /** @var list<array<string, mixed>> what PHP has said about places in the script, as the checker's findings are */
    private array $findings = [];
    /** @var list<string> what it has said besides */
    private array $messages = [];
    private int $start;

    public function __construct(private readonly string $path)
    {
    }

    /** @param array<string, mixed> $data the script's $data */
    public function run(array $data): never
    {
        // The script can neither end nor clear this buffer.
        ob_start($this->answer(...), 0, 0);
        set_error_handler(function (int $level, string $message, string $file, int $line): bool {
            // What an "@" silences is for error_get_last().
            $isWanted = (error_reporting() & $level) !== 0;
            $isWanted && $this->note('warning', (self::KINDS[$level] ?? '') . $message, $file, $line);
            return $isWanted;
        });
        // Scripts have the classes for applications, too.
        require __DIR__ . '/library/autoload.php';
        $this->start = hrtime(true);
        try {
            (static function (array $data): void {
                require func_get_arg(1);
            })($data, getcwd() . "/$this->path");
        } catch (Throwable $thrown) {
            $kind = $thrown instanceof ParseError ? '' : 'Uncaught ' . $thrown::class . ': ';
            // What a library has thrown belongs to the line that called it.
            $places = [['file' => $thrown->getFile(), 'line' => $thrown->getLine()], ...$thrown->getTrace()];
            $own = array_filter($places, static fn(array $place): bool => str_starts_with($place['file'] ?? '', self::FOLDER));
            ['file' => $file, 'line' => $line] = reset($own) ?: $places[0];
            $this->note('error', $kind . $thrown->getMessage(), $file, $line);
        }
        exit;
    }

    private function note(string $severity, string $message, string $file, int $line): void
    {
        if (!str_starts_with($file, self::FOLDER)) {
            $this->messages[] = $message;
            return;
        }
        $code = explode("\n", (string) @file_get_contents($file))[$line - 1] ?? '';
        $this->findings[] = [
            'file' => substr($file, strlen(self::FOLDER)),
            'line' => $line,
            'column' => strspn($code, " \t") + 1,
            'endLine' => $line,
            'endColumn' => mb_strlen(rtrim($code), 'UTF-8') + 1,
            'severity' => $severity,
            'name' => null,
            'message' => $message,
            'notes' => [],
            'includedFrom' => [],
        ];
    }

    private function answer(string $printed): string
    {
        $time = hrtime(true) - $this->start;
        $error = error_get_last();
        if (str_starts_with($error['message'] ?? '', 'Allowed memory size')) {
            return '{"stopped":"memory"}';
        }
        $isBroken = in_array($error['type'] ?? 0, [E_ERROR, E_CORE_ERROR, E_COMPILE_ERROR], true);
        $isBroken && $this->note('error', $error['message'], $error['file'], $error['line']);
        $said = ['messages' => array_slice($this->messages, 0, 20), 'findings' => array_slice($this->findings, 0, 20)];
        return json_encode(strlen($printed) > LARGEST_PAGE ? ['stopped' => 'size'] + $said : [
            'page' => $printed,
            'size' => strlen($printed),
            'nanoseconds' => $time,
        ] + $said, JSON_INVALID_UTF8_SUBSTITUTE);
    }
}
