<?php

namespace TemplateTool\Report;

use TemplateTool\Check\Finding;
use TemplateTool\Rules\Catalogue;

/** The formats of "template check". */
final class Report
{
    public const FORMATS = ['text', 'json', 'checkstyle', 'github', 'sarif'];

    /** @param list<Finding> $findings */
    public static function make(string $format, array $findings, int $files, Paint $paint): string
    {
        return match ($format) {
            'text' => self::text($findings, $files, $paint),
            'json' => self::json($findings) . "\n",
            'checkstyle' => self::checkstyle($findings),
            'sarif' => Sarif::make($findings),
            'github' => implode('', array_map(self::github(...), $findings)),
        };
    }

    public static function json(mixed $value): string
    {
        $flags = JSON_PRETTY_PRINT | JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_INVALID_UTF8_SUBSTITUTE;
        return json_encode($value, $flags | JSON_THROW_ON_ERROR, 4096);
    }

    private static function text(array $findings, int $files, Paint $paint): string
    {
        $text = '';
        $printer = new Text($paint);
        foreach ($findings as $finding) {
            $text .= $printer->one($finding) . "\n";
        }
        $checked = self::count($files, 'template');
        $errors = count(array_filter($findings, static fn(Finding $finding): bool => $finding->isError()));
        $warnings = count($findings) - $errors;
        if (!$findings) {
            return $paint("No findings in $checked.", 'green') . "\n";
        }
        $text .= self::count($errors, 'error') . ' and ' . self::count($warnings, 'warning') . " in $checked.\n";
        $names = array_intersect(array_column($findings, 'name'), Catalogue::names());
        if ($names) {
            $name = reset($names);
            $text .= "\"template explain $name\" tells more about a warning, \"--off $name\" leaves it out.\n";
        }
        $mendable = count(array_filter($findings, static fn(Finding $finding): bool => $finding->edits !== []));
        if ($mendable) {
            $text .= '"template check --fix" mends ' . ($mendable === 1 ? 'one' : $mendable) . " of them.\n";
        }
        return $text;
    }

    private static function count(int $number, string $what): string
    {
        return number_format($number) . " $what" . ($number === 1 ? '' : 's');
    }

    private static function checkstyle(array $findings): string
    {
        $xml = static fn(string $text): string => htmlspecialchars(Text::visible($text), ENT_XML1 | ENT_QUOTES);
        $text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<checkstyle version=\"4.3\">\n";
        $files = [];
        foreach ($findings as $finding) {
            $files[$finding->source->name][] = $finding;
        }
        foreach ($files as $file => $ofFile) {
            $text .= "  <file name=\"{$xml($file)}\">\n";
            foreach ($ofFile as $finding) {
                $message = $xml(implode('; ', [$finding->message, ...$finding->notes, ...self::chain($finding)]));
                $source = 'template.' . ($finding->name ?? 'engine');
                $text .= "    <error line=\"$finding->line\" column=\"$finding->column\" "
                    . "severity=\"$finding->severity\" message=\"$message\" source=\"$source\"/>\n";
            }
            $text .= "  </file>\n";
        }
        return "$text</checkstyle>\n";
    }

    private static function github(Finding $finding): string
    {
        $escape = ['%' => '%25', "\r" => '%0D', "\n" => '%0A'];
        $property = $escape + [':' => '%3A', ',' => '%2C'];
        $place = strtr($finding->source->name, $property);
        $title = $finding->name ?? 'template error';
        $message = strtr(implode("\n", [$finding->message, ...$finding->notes, ...self::chain($finding)]), $escape);
        return mb_scrub("::$finding->severity file=$place,line=$finding->line,endLine=$finding->endLine,"
            . "col=$finding->column,endColumn=$finding->endColumn,title=$title::$message\n", 'UTF-8');
    }

    /** @return list<string> */
    private static function chain(Finding $finding): array
    {
        return array_map(
            static fn(array $place): string => "included from $place[file]:$place[line]:$place[column]",
            $finding->includedFrom
        );
    }
}
