<?php

namespace TemplateTool\Needs;

/** What a page needs as a PHPDoc array shape, for static analysers. */
final class PhpDoc
{
    public static function make(Need $top, string $page): string
    {
        $type = explode("\n", self::map($top, ''));
        $lines = ["/**", " * Data of $page.", ' *', ' * @param ' . array_shift($type)];
        foreach ($type as $line) {
            $lines[] = " * $line";
        }
        return implode("\n", $lines) . " \$data\n */\n";
    }

    private static function type(Need $need, string $indent): string
    {
        $type = match (true) {
            $need->element !== null => self::list($need, $indent),
            $need->children !== [] => self::map($need, $indent),
            $need->isString, $need->isFile => 'string',
            $need->isText => 'scalar|null',
            $need->compared !== [] => 'string|int',
            default => 'mixed',
        };
        return $type . (!$need->isBare && $need->isFlag && !in_array($type, ['mixed', 'scalar|null'], true) ? '|false|null' : '');
    }

    private static function list(Need $need, string $indent): string
    {
        $element = self::type($need->element, $indent);
        return match ($need->isMap()) {
            true => "array<string, $element>",
            null => "array<$element>",
            false => ($need->children ? 'non-empty-' : '') . "list<$element>",
        };
    }

    private static function map(Need $need, string $indent): string
    {
        if (!$need->children) {
            return 'array<mixed>';
        }
        $shape = "array{\n";
        foreach ($need->children as $key => $child) {
            $name = preg_match('/^(?:[a-z_][a-z0-9_-]*|\d+)\z/i', (string) $key) ? $key : "'" . addcslashes((string) $key, "'\\") . "'";
            $shape .= "$indent    $name" . ($child->isRequired ? '' : '?') . ': ' . self::type($child, "$indent    ") . ",\n";
        }
        return "$shape$indent    ...\n$indent}";
    }
}
