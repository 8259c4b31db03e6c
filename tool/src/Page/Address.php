<?php

namespace TemplateTool\Page;

/** A URL in an attribute: which part of it has been reached, and what the browser does with it. */
final class Address implements Scanner
{
    /** What the address is for: to be followed by the visitor, to be loaded into the page, to be run as a script. */
    public const LINK = 'link';
    public const RESOURCE = 'resource';
    public const SCRIPT = 'script';

    /** The content of <meta http-equiv="refresh">: a number and an address. */
    public const REFRESH = 'refresh';

    private const START = 'start';
    private const SLASH = 'slash';
    private const HOST = 'host';
    private const PATH = 'path';
    private const QUERY = 'query';
    private const DATA = 'data';
    private const CODE = 'code';
    private const DELAY = 'delay';

    // Which part an address has reached that begins like this; the first that fits counts.
    private const PARTS = [
        '~^(?:javascript|vbscript):~' => self::CODE,
        '~^data:~' => self::DATA,
        '~^[^?#]*[?#]~' => self::QUERY,
        '~^(?:[a-z][a-z0-9+.-]*:)?[/\\\\]{2,}[^/\\\\]*$~' => self::HOST,
        '~^(?:https?|wss?|ftp):[/\\\\]?[^/\\\\]*$~' => self::HOST,
        '~^[/\\\\]$~' => self::SLASH,
        '~^$~' => self::START,
        '~^(?:j|ja|jav|java|javas|javasc|javascr|javascri|javascrip|javascript|d|da|dat|data)$~' => self::START,
    ];

    // What stands in front of the address that is loaded after some seconds: "5; url=".
    private const DELAYED = '~^[\s\d.]*[;,\s]\s*(?:url\s*=\s*["\']?|(?!u(?:r(?:l\s*)?)?\z)(?=[^\s;,]))~i';
    private const LONGEST = 300;

    private string $part;
    private string $begin = '';
    private ?Script $script = null;

    public function __construct(private string $use)
    {
        $this->part = $use === self::REFRESH ? self::DELAY : self::START;
    }

    public function __clone()
    {
        $this->script = $this->script ? clone $this->script : null;
    }

    public function read(string $text): void
    {
        if ($this->part === self::DELAY) {
            $this->begin .= $text;
            if (!preg_match(self::DELAYED, $this->begin, $match)) {
                return;
            }
            $text = substr($this->begin, strlen($match[0]));
            $this->begin = '';
            $this->part = self::START;
        }
        if ($this->script) {
            $this->script->read($text);
        } elseif (!in_array($this->part, [self::DATA, self::QUERY], true)) {
            $this->advance($text);
        }
    }

    public function value(): void
    {
        $this->script?->value();
        if (in_array($this->part, [self::START, self::SLASH, self::HOST, self::DELAY], true)) {
            // What comes first decides, and has been looked at.
            $this->part = self::PATH;
            $this->begin = 'x/';
        }
    }

    public function risk(Escaping $given, string $following = ''): ?Risk
    {
        if ($this->script) {
            return $this->script->risk($given);
        }
        $isActive = $this->use !== self::LINK && $this->use !== self::REFRESH;
        $why = match ($this->part) {
            self::DATA => 'what the value says is part of a document or a script',
            self::DELAY, self::START => match (true) {
                $given === Escaping::Url => null,
                $this->use === self::REFRESH => 'the value decides where the browser goes',
                $this->use === self::SCRIPT => 'the value decides which script is run',
                default => 'the value may begin with "javascript:"',
            },
            self::HOST => $isActive ? 'the value decides which server is asked' : null,
            self::SLASH => $isActive && $given !== Escaping::Url
                ? 'with one more slash the value names a server'
                : null,
            self::PATH => $this->use === self::SCRIPT && $given !== Escaping::Url
                ? 'with "../" the value reaches any file of that server'
                : null,
            default => null,
        };
        if ($why === null) {
            return null;
        }
        $checked = 'let PHP see to it that it begins with "https://" or "/", and vouch for it';
        [$advice, $remedy] = match ($this->part) {
            self::START, self::DELAY => [$checked, null],
            self::DATA, self::HOST => ['take it from a list of your own, and vouch for it', null],
            default => ['"rawurlencode" keeps it to one part of the path', Escaping::Url],
        };
        return new Risk('script-address', 'an address', $why, $advice, $remedy);
    }

    public function key(): string
    {
        return "address:$this->use,$this->part,$this->begin," . $this->script?->key();
    }

    private function advance(string $text): void
    {
        // The browser leaves these out.
        $begin = substr($this->begin . str_replace(["\t", "\n", "\r"], '', $text), 0, self::LONGEST);
        $this->begin = ltrim($begin, "\0..\x20");
        $lower = strtolower($this->begin);
        $this->part = self::PATH;
        foreach (self::PARTS as $pattern => $part) {
            if (preg_match($pattern, $lower, $match)) {
                $this->part = $part;
                if ($part === self::CODE) {
                    $this->script = new Script('the "javascript:" address', true);
                    $this->script->read(substr($this->begin, strlen($match[0])));
                }
                break;
            }
        }
        if ($this->part === self::PATH) {
            $this->begin = 'x/';
        }
    }
}
