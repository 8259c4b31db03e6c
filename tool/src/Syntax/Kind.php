<?php

namespace TemplateTool\Syntax;

/** The kinds of tags; the value is the keyword. */
enum Kind: string
{
    case Plain = '';
    case Include = 'include';
    case Optional = 'optional';
    case NotOptional = '!optional';
    case OptionalEnd = '/optional';
    case Dynamic = 'dynamic';
    case Rdynamic = 'rdynamic';
    case DynamicEnd = '/dynamic';
    case RdynamicEnd = '/rdynamic';
    case Addslashes = 'addslashes';
    case Htmlentities = 'htmlentities';
    case Htmlspecialchars = 'htmlspecialchars';
    case Rawurlencode = 'rawurlencode';

    /** The kind of a tag with this text, braces excluded. No keyword is the beginning of another. */
    public static function of(string $text): self
    {
        foreach (self::cases() as $kind) {
            if ($kind !== self::Plain && str_starts_with($text, $kind->value)) {
                return $kind;
            }
        }
        return self::Plain;
    }

    /** The tag that closes this one; null when it opens nothing. */
    public function end(): ?self
    {
        return match ($this) {
            self::Optional, self::NotOptional => self::OptionalEnd,
            self::Dynamic => self::DynamicEnd,
            self::Rdynamic => self::RdynamicEnd,
            default => null,
        };
    }

    public function isEnd(): bool
    {
        return $this === self::OptionalEnd || $this === self::DynamicEnd || $this === self::RdynamicEnd;
    }

    public function isLoop(): bool
    {
        return $this === self::Dynamic || $this === self::Rdynamic;
    }

    public function isOptional(): bool
    {
        return $this === self::Optional || $this === self::NotOptional;
    }

    public function isEscaping(): bool
    {
        return match ($this) {
            self::Addslashes, self::Htmlentities, self::Htmlspecialchars, self::Rawurlencode => true,
            default => false,
        };
    }
}
