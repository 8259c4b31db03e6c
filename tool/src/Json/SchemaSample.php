<?php

namespace TemplateTool\Json;

/** Makes up data that fits a JSON Schema: with all that it knows of, or with no more than there has to be. */
final class SchemaSample
{
    private const DEEPEST = 12;

    private Schema $rules;

    public function __construct(private array $schema)
    {
        $this->rules = new Schema($schema);
    }

    public function full(): mixed
    {
        return $this->value($this->schema, true, 0);
    }

    /** Lists have an element all the same: what is said of elements shall count. */
    public function least(): mixed
    {
        return $this->value($this->schema, false, 0);
    }

    private function value(array|bool $schema, bool $isFull, int $depth): mixed
    {
        $schema = $this->whole($schema);
        if ($depth > self::DEEPEST) {
            return null;
        }
        if (isset($schema['enum']) || array_key_exists('const', $schema)) {
            return $schema['enum'][0] ?? $schema['const'] ?? null;
        }
        $types = (array) ($schema['type'] ?? []);
        $isObject = isset($schema['properties']) || in_array('object', $types, true);
        return match (true) {
            isset($schema['items']) || ($types && in_array('array', $types, true)) => $this->list($schema, $isFull, $depth),
            $isObject => $this->object($schema, $isFull, $depth),
            in_array('string', $types, true) => $schema['examples'][0] ?? 'text',
            in_array('integer', $types, true) => 1,
            in_array('number', $types, true) => 1.5,
            $types === ['null'] => null,
            // Anything will do, or it is a flag.
            default => $isFull,
        };
    }

    /** With what references, allOf and the first choice of anyOf and oneOf add to it. */
    private function whole(array|bool $schema): array
    {
        $schema = $this->rules->resolved($schema);
        $whole = is_array($schema) ? $schema : [];
        $parts = [...$whole['allOf'] ?? [], ...array_slice($whole['anyOf'] ?? $whole['oneOf'] ?? [], 0, 1)];
        foreach ($parts as $part) {
            $part = $this->rules->resolved($part);
            // A choice between conditions and what then has to be there is settled when the rest is.
            if (is_array($part) && (isset($part['type']) || isset($part['properties'])) && !isset($part['not'])) {
                $part = $this->whole($part);
                $properties = ($whole['properties'] ?? []) + ($part['properties'] ?? []);
                $required = array_unique([...$whole['required'] ?? [], ...$part['required'] ?? []]);
                $whole = array_filter(['properties' => $properties, 'required' => $required]) + $whole + $part;
            }
        }
        return $whole;
    }

    private function list(array $schema, bool $isFull, int $depth): array
    {
        $list = [];
        for ($i = 0, $count = max($isFull ? 2 : 1, $schema['minItems'] ?? 0); $i < $count; $i++) {
            $list[] = $this->value(Schema::ofItem($schema, $i), $isFull, $depth + 1);
        }
        return $list;
    }

    private function object(array $schema, bool $isFull, int $depth): array
    {
        $object = [];
        foreach ($schema['properties'] ?? [] as $key => $inner) {
            if ($isFull || in_array((string) $key, $schema['required'] ?? [], true)) {
                $object[$key] = $this->value($inner, $isFull, $depth + 1);
            }
        }
        if (!isset($schema['properties']) && is_array($schema['additionalProperties'] ?? null)) {
            $object['key'] = $this->value($schema['additionalProperties'], $isFull, $depth + 1);
        }
        // What one choice adds may ask for another.
        for ($rounds = count($schema['allOf'] ?? []); $rounds > 0; $rounds--) {
            foreach ($schema['allOf'] as $part) {
                $object = $this->settled($object, $schema, $part, $depth);
            }
        }
        return $object;
    }

    /** With what makes one of the choices of a part come true. */
    private function settled(array $object, array $schema, array|bool $part, int $depth): array
    {
        foreach ($this->rules->fits($object, $part) ? [] : $part['anyOf'] ?? [] as $choice) {
            $completed = $this->completed($object, $schema, (array) $choice, $depth);
            if ($this->rules->fits($completed, $part)) {
                return $completed;
            }
        }
        return $object;
    }

    /** With what a part of the schema requires. */
    private function completed(mixed $value, array $schema, array $part, int $depth): mixed
    {
        if (!is_array($value)) {
            return $value;
        }
        $schema = $this->whole($schema);
        while (isset($part['minItems']) && array_is_list($value) && count($value) < $part['minItems']) {
            $value[] = $this->value(Schema::ofItem($schema, count($value)), false, $depth + 1);
        }
        foreach (array_is_list($value) ? array_keys($value) : [] as $i) {
            $value[$i] = $this->completed($value[$i], (array) Schema::ofItem($schema, $i), (array) Schema::ofItem($part, $i), $depth + 1);
        }
        foreach ($part['required'] ?? [] as $key) {
            $value[$key] ??= $this->value($schema['properties'][$key] ?? true, false, $depth + 1);
        }
        foreach ($part['properties'] ?? [] as $key => $inner) {
            if (isset($value[$key])) {
                $value[$key] = $this->completed($value[$key], (array) ($schema['properties'][$key] ?? []), (array) $inner, $depth + 1);
            }
        }
        return $value;
    }
}
