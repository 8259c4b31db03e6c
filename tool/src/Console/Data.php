<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use TemplateTool\Files\Files;
use TemplateTool\Files\Given;
use TemplateTool\Json\JsonText;

/** The data that a command is given: from a JSON file, a PHP file, and single values of the command line. */
final class Data
{
    public const JSON_HELP = 'A JSON file, or "-" for the standard input';

    public static function addOptions(Command $command): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $command->addOption('data-php', null, InputOption::VALUE_REQUIRED, 'A PHP file that returns the data');
        $command->addOption(
            'set',
            's',
            $several,
            'A single value: <info>path::to::key=text</info>, or <info>path::to::key:=json</info> for other types'
        );
    }

    /** Null when the command line names no data. $json: the name of a JSON file. */
    public static function read(InputInterface $input, ?string $json): ?array
    {
        $data = null;
        if ($json !== null) {
            $name = Given::name($json);
            $data = self::array(JsonText::decode(self::contents($json), $name), $name);
        }
        $php = $input->getOption('data-php');
        if ($php !== null) {
            $data = array_replace($data ?? [], self::array(self::run($php), Given::name($php)));
        }
        foreach ($input->getOption('set') as $setting) {
            $data = self::set($data ?? [], $setting);
        }
        return $data;
    }

    /** @return list<string> the files that the data comes from */
    public static function files(InputInterface $input, ?string $json): array
    {
        return array_filter([$json, $input->getOption('data-php')], fn($file): bool => $file !== null && !Given::isStream($file));
    }

    /** The text of a file, or of what stands for one. */
    public static function contents(string $file): string
    {
        $isStream = Given::isStream($file);
        $isStream || self::mustExist($file);
        $text = $isStream ? Given::text($file) : @file_get_contents($file);
        return is_string($text) ? $text : throw new Failure(Given::name($file) . ': reading failed');
    }

    private static function run(string $file): mixed
    {
        $isStream = Given::isStream($file);
        $isStream || self::mustExist($file);
        $code = $isStream ? '?>' . self::contents($file) : '';
        // What such a file prints is no part of the page.
        ob_start();
        try {
            return $isStream
                ? (static fn() => eval(func_get_arg(0)))($code)
                : (static fn() => require func_get_arg(0))(realpath($file));
        } catch (\Throwable $error) {
            $place = basename($error->getFile()) . ':' . $error->getLine();
            $place = $isStream ? "line {$error->getLine()}" : $place;
            throw new Failure(Given::name($file) . ': ' . get_class($error) . " in $place: " . $error->getMessage());
        } finally {
            ob_end_clean();
        }
    }

    private static function mustExist(string $file): void
    {
        $problem = Files::problem($file);
        if ($problem !== null) {
            throw new Failure("$file: $problem");
        }
    }

    private static function array(mixed $data, string $name): array
    {
        if (!is_array($data)) {
            throw new Failure("$name: the data must be an object or an array, not " . get_debug_type($data));
        }
        return $data;
    }

    private static function set(array $data, string $setting): array
    {
        if (!preg_match('/^(.+?)(:?=)(.*)$/s', $setting, $match)) {
            throw new Failure("--set $setting: write path::to::key=value");
        }
        [, $path, $sign, $value] = $match;
        if ($sign === ':=') {
            $value = JsonText::decode($value, "--set $path");
        }
        return self::with($data, explode('::', $path), $value);
    }

    /** Without PHP references, which the engine doesn't follow. */
    private static function with(mixed $data, array $indexes, mixed $value): array
    {
        $data = is_array($data) ? $data : [];
        $index = array_shift($indexes);
        $data[$index] = $indexes ? self::with($data[$index] ?? null, $indexes, $value) : $value;
        return $data;
    }
}
