<?php

namespace TemplateTool\Page;

/** JavaScript: code, texts in quotes, template literals, comments and regular expressions. */
final class Script implements Scanner
{
    private const CODE = 'code';
    private const LITERAL = 'template literal';
    private const LINE_COMMENT = 'line comment';
    private const COMMENT = 'comment';
    private const REGEX = 'regular expression';
    private const REGEX_CLASS = 'class of a regular expression';

    private const TOKENS = '~\G(?:\s++(*MARK:blank)|(?://|<!--)(*MARK:line)|/\*(*MARK:block)|/(*MARK:slash)'
        . '|"(*MARK:")|\'(*MARK:\')|`(*MARK:`)|[\w$\x80-\xFF]++(*MARK:word)|\{(*MARK:open)|\}(*MARK:close)'
        . '|[)\]](*MARK:operand)|.(*MARK:operator))~s';

    // What may end each mode, or belongs to what follows.
    private const STOPS = [
        '"' => "\"\\\n",
        "'" => "'\\\n",
        self::LITERAL => '`\\$',
        self::LINE_COMMENT => "\n\r",
        self::COMMENT => '*',
        self::REGEX => "/\\[\n",
        self::REGEX_CLASS => "]\\\n",
    ];

    // Behind these words a slash begins a regular expression.
    private const OPERATORS = ' return typeof case in of delete void throw new do else instanceof yield await ';

    private const ADVICE = 'put it into a data- attribute with "htmlspecialchars" and let the script read it there,'
        . ' or print JSON that PHP has made and vouch for it';

    private string $mode = self::CODE;

    /** The end of what was read, when it isn't clear yet what it is. */
    private string $pending = '';

    private bool $isOperand = false;

    /** @var list<int> for each template literal that is open around this code: the open braces within */
    private array $literals = [];

    /** $where: "a script"; $isDecoded: percent signs are taken back before the script runs. */
    public function __construct(private string $where, private bool $isDecoded = false)
    {
    }

    public function read(string $text): void
    {
        $text = $this->pending . ($this->isDecoded ? rawurldecode($text) : $text);
        $this->pending = '';
        for ($offset = 0, $length = strlen($text); $offset < $length;) {
            $offset = $this->mode === self::CODE ? $this->code($text, $offset) : $this->inside($text, $offset);
        }
    }

    public function value(): void
    {
        $this->pending = '';
        if ($this->mode === self::CODE) {
            $this->isOperand = true;
        }
    }

    public function risk(Escaping $given, string $following = ''): ?Risk
    {
        if ($given === Escaping::Url && $this->mode !== self::CODE && !$this->isDecoded) {
            return null;
        }
        $why = match ($given) {
            Escaping::Url => $this->isDecoded
                ? 'the browser takes the percent signs back before it runs the script'
                : 'outside of quotes letters and dots are code already',
            Escaping::Html => str_starts_with($this->where, 'a ')
                ? 'entities mean nothing there, and a backslash is not escaped'
                : 'the browser takes the entities back before it runs the script',
            default => '"</script>" or a line break still ends it, or a double quote the attribute',
        };
        return Risk::of($given, $this->place(), $why, self::ADVICE);
    }

    public function key(): string
    {
        $fields = [$this->where, $this->mode, $this->pending, (int) $this->isOperand, ...$this->literals];
        return 'script:' . implode(',', $fields);
    }

    public function place(): string
    {
        return match ($this->mode) {
            self::CODE => "$this->where, outside of quotes",
            '"', "'" => "$this->where, in quotes",
            default => "$this->where ($this->mode)",
        };
    }

    private function code(string $text, int $offset): int
    {
        // Each of these may be the beginning of a comment.
        $byte = $text[$offset];
        if (($byte === '/' || $byte === '<') && preg_match('~\G(?:/|<!?-?)\z~', $text, $match, 0, $offset)) {
            $this->pending = $match[0];
            return strlen($text);
        }
        preg_match(self::TOKENS, $text, $match, 0, $offset);
        $token = $match['MARK'];
        $this->mode = match ($token) {
            '"', "'" => $token,
            '`' => self::LITERAL,
            'line' => self::LINE_COMMENT,
            'block' => self::COMMENT,
            'slash' => $this->isOperand ? self::CODE : self::REGEX,
            default => self::CODE,
        };
        if ($token === 'open' && $this->literals) {
            $this->literals[array_key_last($this->literals)]++;
        } elseif ($token === 'close' && $this->literals && $this->literals[array_key_last($this->literals)]-- === 0) {
            array_pop($this->literals);
            $this->mode = self::LITERAL;
        }
        if ($token === 'word') {
            $this->isOperand = !str_contains(self::OPERATORS, " $match[0] ");
        } elseif (!in_array($token, ['blank', 'line', 'block'], true)) {
            $this->isOperand = $token === 'operand';
        }
        return $offset + strlen($match[0]);
    }

    private function inside(string $text, int $offset): int
    {
        $offset += strcspn($text, self::STOPS[$this->mode], $offset);
        $byte = $text[$offset] ?? '';
        $next = $text[$offset + 1] ?? '';
        $isPair = in_array($byte, ['\\', '$', '*'], true);
        if ($byte === '' || ($isPair && $next === '')) {
            $this->pending = $byte;
            return strlen($text);
        }
        if ($byte === '\\') {
            return $offset + 2;
        }
        if ($isPair && $next !== ['$' => '{', '*' => '/'][$byte]) {
            return $offset + 1;
        }
        if ($byte === '$') {
            $this->literals[] = 0;
            $this->isOperand = false;
            $this->mode = self::CODE;
            return $offset + 2;
        }
        $this->isOperand = $this->isOperand || !in_array($this->mode, [self::COMMENT, self::LINE_COMMENT], true);
        $this->mode = match (true) {
            $this->mode === self::REGEX && $byte === '[' => self::REGEX_CLASS,
            $this->mode === self::REGEX_CLASS && $byte === ']' => self::REGEX,
            default => self::CODE,
        };
        return $offset + ($byte === '*' ? 2 : 1);
    }
}
