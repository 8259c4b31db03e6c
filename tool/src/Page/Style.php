<?php

namespace TemplateTool\Page;

/** CSS: rules and declarations, texts in quotes, addresses and comments. */
final class Style implements Scanner
{
    private const CODE = 'code';
    private const URL = 'address';
    private const COMMENT = 'comment';

    // What may end each mode, or belongs to what follows.
    private const STOPS = [
        self::CODE => '/"\':;{}\\uU',
        '"' => "\"\\\n",
        "'" => "'\\\n",
        self::URL => ')\\',
        self::COMMENT => '*',
    ];

    // What may become an address, a comment or an escape.
    private const UNCLEAR = '~\G(?:/|\\\\|(?<![\w-])u(?:r(?:l(?:\(\s*+)?)?)?)\z~i';

    private const ADVICE = 'choose among values of your own by sections or classes, or vouch for it';

    private string $mode = self::CODE;
    private string $pending = '';

    /** Whether a value of a declaration has begun. */
    private bool $isValue = false;

    /** $where: "a style sheet". */
    public function __construct(private string $where)
    {
    }

    public function read(string $text): void
    {
        $text = $this->pending . $text;
        $this->pending = '';
        for ($offset = 0, $length = strlen($text); $offset < $length;) {
            $offset += strcspn($text, self::STOPS[$this->mode], $offset);
            if ($offset < $length) {
                $offset += $this->mode === self::CODE ? $this->code($text, $offset) : $this->inside($text, $offset);
            }
        }
    }

    public function value(): void
    {
        if (stripos($this->pending, 'url(') === 0) {
            $this->mode = self::URL;
        }
        $this->pending = '';
    }

    public function risk(Escaping $given, string $following = ''): ?Risk
    {
        if ($given === Escaping::Url && ($this->mode !== self::CODE || $this->isValue)) {
            return null;
        }
        $why = match ($given) {
            Escaping::Url => 'letters are enough for a selector or a property',
            Escaping::Html => 'CSS has signs of its own, and entities mean nothing to it',
            default => 'CSS has signs of its own',
        };
        return Risk::of($given, $this->where, $why, self::ADVICE);
    }

    public function key(): string
    {
        return "style:$this->where,$this->mode,$this->pending," . (int) $this->isValue;
    }

    /** What stands at a stop within code; returns its length. */
    private function code(string $text, int $offset): int
    {
        $byte = $text[$offset];
        if (preg_match(self::UNCLEAR, $text, $match, 0, $offset)) {
            $this->pending = $match[0];
            return strlen($match[0]);
        }
        if ($byte === ':' || $byte === ';' || $byte === '{' || $byte === '}') {
            $this->isValue = $byte === ':';
        } elseif ($byte === '"' || $byte === "'") {
            $this->mode = $byte;
        } elseif ($byte === '\\') {
            return 2;
        } elseif ($byte === '/' && $text[$offset + 1] === '*') {
            $this->mode = self::COMMENT;
            return 2;
        } elseif (preg_match('~\G(?<![\w-])url\(\s*+(?!["\'\s]|\z)~i', $text, $match, 0, $offset)) {
            $this->mode = self::URL;
            return strlen($match[0]);
        }
        return 1;
    }

    /** What stands at a stop within quotes, an address or a comment; returns its length. */
    private function inside(string $text, int $offset): int
    {
        $byte = $text[$offset];
        $next = $text[$offset + 1] ?? '';
        if ($byte === '\\' || $byte === '*') {
            $this->pending = $next === '' ? $byte : '';
            if ($byte === '\\' || $next !== '/') {
                return $byte === '\\' ? 2 : 1;
            }
        }
        $this->mode = self::CODE;
        return $byte === '*' ? 2 : 1;
    }
}
