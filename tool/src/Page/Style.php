<?php

namespace TemplateTool\Page;

/** CSS: rules and declarations, texts in quotes, addresses and comments. */
final class Style implements Scanner
{
    private const CODE = 'code';
    private const URL = 'address';
    private const COMMENT = 'comment';

    private const TOKENS = '~\G(?:/\*(*MARK:comment)|"(*MARK:")|\'(*MARK:\')|url\(\s*+(?=[^"\'\s])(*MARK:url)'
        . '|:(*MARK:colon)|[;{}](*MARK:end)|(?:[^/"\':;{}\\\\u]|\\\\.|u(?!rl\()|url\((?=\s*["\'])|/(?!\*))++)~si';

    // What may become an address, a comment or an escape.
    private const UNCLEAR = '~(?:/|\\\\|(?<![a-z])u(?:r(?:l(?:\(\s*)?)?)?)\z~i';

    private const INSIDE = [
        '"' => '~\G(?:[^"\\\\\n]|\\\\.)++~s',
        "'" => "~\\G(?:[^'\\\\\n]|\\\\.)++~s",
        self::URL => '~\G(?:[^)\\\\]|\\\\.)++~s',
        self::COMMENT => '~\G(?:[^*]|\*(?!/|\z))++~',
    ];

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
        if ($this->mode === self::CODE && preg_match(self::UNCLEAR, $text, $match)) {
            $this->pending = $match[0];
            $text = substr($text, 0, -strlen($match[0]));
        }
        for ($offset = 0, $length = strlen($text); $offset < $length;) {
            $offset = $this->mode === self::CODE ? $this->code($text, $offset) : $this->inside($text, $offset);
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

    private function code(string $text, int $offset): int
    {
        if (!preg_match(self::TOKENS, $text, $match, 0, $offset)) {
            return $offset + 1;
        }
        $token = $match['MARK'] ?? '';
        $this->mode = match ($token) {
            '"', "'" => $token,
            'comment' => self::COMMENT,
            'url' => self::URL,
            default => self::CODE,
        };
        $this->isValue = $token === 'colon' || ($token !== 'end' && $this->isValue);
        return $offset + strlen($match[0]);
    }

    private function inside(string $text, int $offset): int
    {
        if (preg_match(self::INSIDE[$this->mode], $text, $match, 0, $offset)) {
            return $offset + strlen($match[0]);
        }
        if ($offset + 1 === strlen($text) && ($text[$offset] === '\\' || $text[$offset] === '*')) {
            $this->pending = $text[$offset];
            return $offset + 1;
        }
        $width = $this->mode === self::COMMENT ? 2 : 1;
        $this->mode = self::CODE;
        return $offset + $width;
    }
}
