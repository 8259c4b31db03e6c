<?php

namespace TemplateTool\Needs;

/** What a page needs as a JSON Schema: data that fits it makes the page without a missing value. */
final class JsonSchema
{
    /** What a section takes for false. */
    private const FALSE = [null, false, 0, '', '0', []];
    private const SCALAR = ['string', 'number', 'boolean', 'null'];

    /** To be written as JSON. */
    public static function make(Need $top, string $page): array
    {
        return [
            '$schema' => 'http://json-schema.org/draft-07/schema#',
            'title' => "Data of $page",
        ] + self::map($top);
    }

    private static function schema(Need $need): array
    {
        $schema = match (true) {
            $need->element !== null => self::list($need),
            $need->children !== [] => self::map($need),
            $need->isFile => ['type' => 'string', 'examples' => ['']],
            $need->isString => ['type' => 'string'],
            $need->isText => ['type' => self::SCALAR],
            $need->compared !== [] => ['type' => ['string', 'integer']],
            default => [],
        };
        if (!$need->isBare && isset($schema['type']) && ($need->isFlag || $need->children || $need->element)) {
            $other = $need->isFlag ? ['enum' => self::FALSE] : ['type' => $need->element ? self::SCALAR : [...self::SCALAR, 'array']];
            $schema = ['anyOf' => [$schema, $other]];
        }
        $note = self::note($need);
        return ($note === '' ? [] : ['description' => $note]) + $schema;
    }

    private static function note(Need $need): string
    {
        $notes = [];
        if ($need->isFlag) {
            $notes[] = 'shows or hides something';
        }
        if ($need->isFile) {
            $notes[] = 'the name of an included file';
        }
        if ($need->compared) {
            $notes[] = 'compared with ' . implode(', ', array_map(
                static fn($text): string => json_encode((string) $text, JSON_UNESCAPED_UNICODE | JSON_UNESCAPED_SLASHES
                    | JSON_INVALID_UTF8_SUBSTITUTE),
                array_keys($need->compared)
            ));
        }
        return ucfirst(implode('; ', $notes));
    }

    private static function map(Need $need): array
    {
        $schema = ['type' => 'object', 'properties' => []];
        foreach ($need->children as $key => $child) {
            $schema['properties'][$key] = self::schema($child);
            if ($child->isRequired) {
                $schema['required'][] = (string) $key;
            }
        }
        foreach ($need->rules as $rule) {
            $schema['allOf'][] = self::rule($rule);
        }
        $schema['properties'] = (object) $schema['properties'];
        return $schema;
    }

    /** Loops walk lists and maps alike. */
    private static function list(Need $need): array
    {
        $element = self::schema($need->element);
        $schema = ['type' => ['array', 'object']];
        if ($element) {
            $schema += ['items' => $element, 'additionalProperties' => $element];
        }
        if (!$need->children) {
            return $schema;
        }
        // Some elements have a need of their own.
        $indexes = array_keys($need->children);
        $own = static fn(int $index): array => isset($need->children[$index])
            ? ($element ? ['allOf' => [$element, self::schema($need->children[$index])]] : self::schema($need->children[$index]))
            : $element;
        $schema['items'] = array_map(static fn(int $index): object => (object) $own($index), range(0, max($indexes)));
        $schema['properties'] = (object) array_combine($indexes, array_map(static fn($index) => (object) $own($index), $indexes));
        if ($element) {
            $schema['additionalItems'] = $element;
        }
        $required = array_filter($need->children, static fn(Need $child): bool => $child->isRequired);
        if ($required) {
            $schema['minItems'] = max(array_keys($required)) + 1;
            $schema['required'] = array_map(strval(...), array_keys($required));
        }
        return $schema;
    }

    /** "Unless one of the conditions doesn't hold, one of the alternatives is there." */
    private static function rule(Rule $rule): array
    {
        $choices = [];
        foreach ($rule->guards as $guard) {
            $holds = self::holds($guard->path, self::asked($guard->compared));
            $choices[] = $guard->isNegated ? $holds : ['not' => $holds];
        }
        array_push($choices, ...array_map(self::isThere(...), $rule->alternatives));
        return ['anyOf' => $choices];
    }

    private static function asked(?string $compared): array
    {
        if ($compared === null) {
            return ['not' => ['enum' => self::FALSE]];
        }
        $number = preg_match('/^\s*[-+]?\d+/', $compared, $match) ? (int) $match[0] : 0;
        return ['enum' => [$compared, $number]];
    }

    private static function holds(array $path, array $asked): array
    {
        foreach (array_reverse($path) as $step) {
            $object = ['type' => 'object', 'required' => [(string) $step], 'properties' => (object) [$step => (object) $asked]];
            $asked = self::isIndex($step)
                ? ['anyOf' => [$object, ['type' => 'array'] + self::indexed((int) $step, $asked)]]
                : $object;
        }
        return $asked;
    }

    private static function isThere(array $path): array
    {
        $schema = [];
        foreach (array_reverse($path) as $step) {
            if ($step === Need::ELEMENT) {
                $schema = $schema ? ['items' => $schema, 'additionalProperties' => $schema] : [];
            } else {
                $properties = $schema ? ['properties' => (object) [$step => $schema]] : [];
                $index = self::isIndex($step) ? self::indexed((int) $step, $schema) : [];
                $schema = ['required' => [(string) $step]] + $properties + $index;
            }
        }
        return $schema;
    }

    private static function isIndex(string $step): bool
    {
        return (string) (int) $step === $step && (int) $step >= 0;
    }

    /** A list with this element. */
    private static function indexed(int $index, array $element): array
    {
        $any = array_fill(0, $index, (object) []);
        return ['minItems' => $index + 1] + ($element ? ['items' => [...$any, (object) $element]] : []);
    }
}
