<?php

namespace TemplateTool\Syntax;

/** A reference that the engine has accepted, and what it consists of. */
final class Reference implements \JsonSerializable
{
    public const PATH = 'path';
    public const ELEMENT = 'element';
    public const KEY = 'key';

    public readonly string $type;

    /** The loop that an element or a key belongs to; empty for the innermost one. */
    public readonly string $namespace;

    /** @var list<string> */
    public readonly array $indexes;

    /** $offset: where it stands in its tag, counted from the opening brace. */
    public function __construct(public readonly string $text, public readonly int $offset)
    {
        $parts = explode('::', $text);
        $type = self::PATH;
        $namespace = '';
        foreach ($parts as $i => $part) {
            if ($part === '*' || $part === '[*]' || ($part === '.*' && $i === 0)) {
                $type = $part === '[*]' ? self::KEY : self::ELEMENT;
                $namespace = $i > 0 ? $parts[$i - 1] : '';
                $parts = array_slice($parts, $i + 1);
                break;
            }
        }
        $this->type = $type;
        $this->namespace = $namespace;
        $this->indexes = $parts;
    }

    public function isPath(): bool
    {
        return $this->type === self::PATH;
    }

    /** Integers as array keys are written: these, and no others, look for integer keys. */
    public function beginsWithInteger(): bool
    {
        return $this->isPath() && (string) (int) $this->indexes[0] === $this->indexes[0];
    }

    /** Looks a path up in the data; null when there is nothing, else an array that holds the value. */
    public function find(array $data): ?array
    {
        $value = $data;
        foreach ($this->beginsWithInteger() ? [] : $this->indexes as $index) {
            if (!is_array($value) || !array_key_exists($index, $value)) {
                return null;
            }
            $value = $value[$index];
        }
        return $this->beginsWithInteger() ? null : [$value];
    }

    public function jsonSerialize(): array
    {
        return [
            'text' => $this->text,
            'type' => $this->type,
            'namespace' => $this->namespace,
            'indexes' => $this->indexes,
        ];
    }
}
