<?php

namespace Template;

/**
 * One call of the function, from its beginning to its end: sets the include path and an error handler, and takes both back.
 *
 * @internal
 */
final class Call
{
    /** PHP's own warnings about values, which it raises where the function turns them into text. */
    private const ABOUT_VALUES = '/^(?:Array to string conversion|unexpected NAN value)/';

    /** The innermost call that hasn't ended. */
    private static ?self $running = null;

    private static bool $isGuarded = false;

    private ?self $around;
    private string $callersPath;

    /** @var ?callable */
    private $callersHandler;

    /** @var ?array{int, string, string, int} the last warning that may be the function's: level, text, file, line */
    private ?array $held = null;

    /** @throws \LogicException when the include path can't be set */
    public function __construct(string $includePath)
    {
        $callersPath = set_include_path($includePath);
        if ($callersPath === false) {
            throw new \LogicException('The include path is fixed by php_admin_value: templates would not find what they include');
        }
        $this->callersPath = $callersPath;
        $this->callersHandler = set_error_handler([$this, 'hear']);
        $this->around = self::$running;
        self::$running = $this;
    }

    public function end(): void
    {
        self::$running = $this->around;
        $this->restoreHandler();
        set_include_path($this->callersPath);
    }

    /** Code of the data may have left handlers of its own, or have taken this call's away. */
    private function restoreHandler(): void
    {
        for ($tries = 0; $tries < 100; ++$tries) {
            $current = set_error_handler(null);
            restore_error_handler();
            if ($current === [$this, 'hear']) {
                restore_error_handler();
                return;
            }
            if ($current === $this->callersHandler) {
                return;
            }
            restore_error_handler();
        }
        set_error_handler($this->callersHandler);
    }

    /** What the function has against the template. */
    public function message(): string
    {
        return $this->held[1] ?? 'The template was refused, but an error handler of the data took the message';
    }

    /** After a call that brought a page: what was heard wasn't the function's. */
    public function passOn(): void
    {
        if ($this->held !== null && !$this->tellCaller(...$this->held)) {
            trigger_error($this->held[1], E_USER_WARNING);
        }
    }

    /** PHP's error handler while the call runs. */
    public function hear(int $level, string $message, string $file = '', int $line = 0): bool
    {
        if ($level !== E_WARNING || preg_match(self::ABOUT_VALUES, $message) || !self::isFromFunction()) {
            return $this->tellCaller($level, $message, $file, $line);
        }
        // The function's own warning is the last one of a call. One that is followed by another was PHP's.
        $this->passOn();
        $this->held = [$level, $message, $file, $line];
        return true;
    }

    /** Whether the caller's error handler has dealt with it. PHP doesn't tell which levels that one asked for. */
    private function tellCaller(int $level, string $message, string $file, int $line): bool
    {
        return $this->callersHandler !== null && ($this->callersHandler)($level, $message, $file, $line) !== false;
    }

    /** Not from code that the data runs: what has raised the warning is the function, called by an Engine. */
    private static function isFromFunction(): bool
    {
        $raiser = debug_backtrace(DEBUG_BACKTRACE_IGNORE_ARGS, 3)[2] ?? [];
        return ($raiser['function'] ?? '') === 'template' && !isset($raiser['class'])
            && ($raiser['file'] ?? '') === __DIR__ . '/Engine.php';
    }

    /** A fatal error and exit() leave a call without its end; what PHP runs after them is to find all as it was. */
    public static function guard(): void
    {
        if (!self::$isGuarded) {
            self::$isGuarded = true;
            register_shutdown_function(static function (): void {
                while (self::$running !== null) {
                    self::$running->end();
                }
            });
        }
    }
}
