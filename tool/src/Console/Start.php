<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Exception\ExceptionInterface;
use Symfony\Component\Console\Input\ArgvInput;
use Symfony\Component\Console\Output\ConsoleOutput;
use TemplateTool\Files\Given;
use TemplateTool\Files\Unreadable;
use TemplateTool\Json\Broken;

/** Sees to it that all the tool needs is there, and that every failure ends in one line and the right exit status. */
final class Start
{
    public const GOOD = 0;
    public const FINDINGS = 1;
    public const FAILURE = 2;

    private const MEMORY = '2G';
    private const FILE_OPTIONS = ['--data', '-d', '--data-php', '--schema'];

    public static function run(array $argv, string $root): int
    {
        $problem = self::missing($root);
        if ($problem !== null) {
            return self::fail($problem);
        }
        ini_set('memory_limit', self::MEMORY);
        ini_set('display_errors', '0');
        ini_set('log_errors', '0');
        $isOver = false;
        register_shutdown_function(static function () use (&$isOver): void {
            if (!$isOver) {
                $error = error_get_last()['message'] ?? 'the data file ended the program';
                $isMemory = str_starts_with($error, 'Allowed memory size');
                exit(self::fail($isMemory ? 'out of memory (' . self::MEMORY . 'B)' : $error));
            }
        });
        try {
            return (new Application())->run(new ArgvInput(self::withInputNamed($argv)), new ConsoleOutput());
        } catch (Failure | Broken | Unreadable | ExceptionInterface $failure) {
            return self::fail($failure->getMessage());
        } catch (\Throwable $failure) {
            return self::fail(get_class($failure) . ': ' . $failure->getMessage());
        } finally {
            $isOver = true;
        }
    }

    /** The console takes a lone "-" for an argument, never for the value of the option before it. */
    private static function withInputNamed(array $argv): array
    {
        $joined = [];
        foreach ($argv as $word) {
            if ($word === Given::INPUT && in_array(end($joined), self::FILE_OPTIONS, true)) {
                $option = array_pop($joined);
                $word = $option . (str_starts_with($option, '--') ? '=' : '') . Given::INPUT;
            }
            $joined[] = $word;
        }
        return $joined;
    }

    /** What is missing for a start. Begins anew when the extension lies in the source tree and isn't loaded. */
    private static function missing(string $root): ?string
    {
        if (!extension_loaded('template')) {
            foreach (["$root/modules/template.so", "$root/build/plain/modules/template.so"] as $module) {
                if (is_file($module) && function_exists('pcntl_exec') && !getenv('TEMPLATE_TOOL_STARTED')) {
                    $arguments = ['-d', "extension=$module", ...$_SERVER['argv']];
                    pcntl_exec(PHP_BINARY, $arguments, getenv() + ['TEMPLATE_TOOL_STARTED' => '1']);
                }
            }
            return 'the extension isn\'t loaded: build it with "phpize && ./configure && make", or enable it in PHP';
        }
        foreach (['ctype' => 'common', 'mbstring' => 'mbstring', 'intl' => 'intl'] as $extension => $package) {
            if (!extension_loaded($extension)) {
                return "PHP's extension $extension is needed: apt-get install php8.2-$package";
            }
        }
        return self::prepare($root)
            ? null
            : 'symfony/console is needed: apt-get install php-symfony-console';
    }

    /** Loads symfony/console, from Composer or from Debian's package. Returns whether it is there. */
    public static function prepare(string $root): bool
    {
        foreach (["$root/vendor", dirname($root, 2), '/usr/share/php/Symfony/Component/Console'] as $folder) {
            if (!class_exists(\Symfony\Component\Console\Application::class) && is_file("$folder/autoload.php")) {
                require_once "$folder/autoload.php";
            }
        }
        return class_exists(\Symfony\Component\Console\Application::class);
    }

    private static function fail(string $message): int
    {
        fwrite(STDERR, 'template: ' . trim(preg_replace('/[\s\x00-\x1F\x7F]+/', ' ', $message)) . "\n");
        return self::FAILURE;
    }
}
