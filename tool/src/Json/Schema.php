<?php

namespace TemplateTool\Json;

/**
 * Holds values against a JSON Schema. It knows the words that the tool itself writes: type, enum, const, pattern,
 * properties, required, additionalProperties, items, additionalItems, minItems, allOf, anyOf, not, and $ref within the file; others make
 * no difference.
 */
final class Schema
{
    private const TYPES = [
        'object' => 'an object',
        'array' => 'a list',
        'string' => 'a text',
        'integer' => 'an integer',
        'number' => 'a number',
        'boolean' => 'true or false',
        'null' => 'null',
    ];

    public function __construct(private array $schema)
    {
    }

    /** @return ?array{list<string|int>, string} the path to the first value that doesn't fit, and what is wrong */
    public function problem(mixed $value): ?array
    {
        return $this->check($value, $this->schema, []);
    }

    public function fits(mixed $value, array|bool $schema): bool
    {
        return $this->check($value, $schema, []) === null;
    }

    /** The schema that a reference stands for; itself when it is none. */
    public function resolved(array|bool $schema): array|bool
    {
        for ($steps = 0; isset($schema['$ref']) && $steps < 100; $steps++) {
            $target = $this->schema;
            foreach (array_slice(explode('/', $schema['$ref']), 1) as $part) {
                $target = $target[strtr(rawurldecode($part), ['~1' => '/', '~0' => '~'])] ?? [];
            }
            $schema = $target;
        }
        return $schema;
    }

    private function check(mixed $value, array|bool $schema, array $path): ?array
    {
        $schema = $this->resolved($schema);
        if (is_bool($schema)) {
            return $schema ? null : [$path, 'nothing may stand here'];
        }
        $types = (array) ($schema['type'] ?? []);
        if ($types && !array_filter($types, static fn(string $type): bool => self::isType($value, $type))) {
            $allowed = implode(' or ', array_map(static fn(string $type): string => self::TYPES[$type], $types));
            return [$path, "this must be $allowed, not " . self::describe($value)];
        }
        $allowed = $schema['enum'] ?? (array_key_exists('const', $schema) ? [$schema['const']] : null);
        if ($allowed !== null && !in_array($value, $allowed, true)) {
            return [$path, self::show($value) . ' isn\'t allowed; choose one of '
                . implode(', ', array_map(self::show(...), $allowed))];
        }
        if (is_string($value) && isset($schema['pattern']) && !preg_match("~{$schema['pattern']}~u", $value)) {
            return [$path, self::show($value) . " doesn't match {$schema['pattern']}"];
        }
        return $this->combined($value, $schema, $path)
            ?? (is_array($value) ? $this->inside($value, $schema, $path) : null);
    }

    private function combined(mixed $value, array $schema, array $path): ?array
    {
        foreach ($schema['allOf'] ?? [] as $part) {
            if ($problem = $this->check($value, $part, $path)) {
                return $problem;
            }
        }
        $problem = null;
        foreach ($schema['anyOf'] ?? [] as $part) {
            $problem = $this->check($value, $part, $path);
            if ($problem === null) {
                break;
            }
        }
        if ($problem === null && isset($schema['not']) && $this->fits($value, $schema['not'])) {
            return [$path, 'this isn\'t allowed here'];
        }
        return $problem;
    }

    private function inside(array $value, array $schema, array $path): ?array
    {
        if (array_is_list($value) && $value) {
            $least = $schema['minItems'] ?? 0;
            foreach ($value as $key => $item) {
                if ($problem = $this->check($item, self::ofItem($schema, $key), [...$path, $key])) {
                    return $problem;
                }
            }
            return count($value) < $least ? [$path, "this list must have $least elements or more"] : null;
        }
        if (!$value && ($schema['minItems'] ?? 0) > 0) {
            return [$path, 'this list must not be empty'];
        }
        foreach ($schema['required'] ?? [] as $key) {
            if (!array_key_exists($key, $value)) {
                return [$path, "\"$key\" is missing"];
            }
        }
        foreach ($value as $key => $item) {
            $inner = $schema['properties'][$key] ?? $schema['additionalProperties'] ?? true;
            if ($inner === false) {
                return [[...$path, $key], self::unknown((string) $key, array_keys($schema['properties'] ?? []))];
            }
            if ($problem = $this->check($item, $inner, [...$path, $key])) {
                return $problem;
            }
        }
        return null;
    }

    /** The schema of an element: items may be one for all, or a list of which each is for one. */
    public static function ofItem(array $schema, int $index): array|bool
    {
        $items = $schema['items'] ?? true;
        return is_array($items) && $items && array_is_list($items)
            ? $items[$index] ?? $schema['additionalItems'] ?? true
            : $items;
    }

    private static function unknown(string $key, array $allowed): string
    {
        $near = array_filter($allowed, static fn($other): bool => levenshtein($key, (string) $other) <= 3);
        return "\"$key\" isn't known here; "
            . ($near ? 'is "' . reset($near) . '" meant?' : 'there are ' . implode(', ', $allowed));
    }

    private static function isType(mixed $value, string $type): bool
    {
        return match ($type) {
            'object' => is_array($value) && (!$value || !array_is_list($value)),
            'array' => is_array($value) && array_is_list($value),
            'string' => is_string($value),
            'integer' => is_int($value) || (is_float($value) && floor($value) === $value),
            'number' => is_int($value) || is_float($value),
            'boolean' => is_bool($value),
            'null' => $value === null,
            default => false,
        };
    }

    private static function describe(mixed $value): string
    {
        return match (true) {
            is_array($value) => $value ? (array_is_list($value) ? 'a list' : 'an object') : 'an empty list or object',
            is_string($value) => 'the text ' . self::show($value),
            default => self::show($value),
        };
    }

    private static function show(mixed $value): string
    {
        $text = json_encode($value, JSON_UNESCAPED_SLASHES | JSON_UNESCAPED_UNICODE | JSON_PARTIAL_OUTPUT_ON_ERROR);
        return mb_strimwidth((string) $text, 0, 60, '…', 'UTF-8');
    }
}
