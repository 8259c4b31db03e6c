<?php

namespace TemplateTool\Rules\Security;

/** Follows HTML text and knows what kind of place it has come to. */
final class HtmlPlace
{
    public const TEXT = 'text';
    public const TAG = 'tag';
    public const DOUBLE_QUOTED = 'double-quoted attribute';
    public const SINGLE_QUOTED = 'single-quoted attribute';
    public const UNQUOTED = 'unquoted attribute';
    public const SCRIPT = 'script';
    public const STYLE = 'style';
    public const COMMENT = 'comment';

    public string $place = self::TEXT;

    // What the tag that is open leads to.
    private string $behindTag = self::TEXT;

    // For each place: what ends it, and where that leads. The first that occurs counts.
    private const EXITS = [
        self::TEXT => '~<!--|<script\b|<style\b|</?[a-z]~i',
        self::TAG => '~>|=\s*["\']|=\s*(?=[^\s"\'>])|=\s*\z~',
        self::DOUBLE_QUOTED => '~"~',
        self::SINGLE_QUOTED => "~'~",
        self::UNQUOTED => '~\s|(?=>)~',
        self::SCRIPT => '~</script~i',
        self::STYLE => '~</style~i',
        self::COMMENT => '~-->~',
    ];

    public function read(string $text): void
    {
        for ($offset = 0; preg_match(self::EXITS[$this->place], $text, $match, PREG_OFFSET_CAPTURE, $offset);) {
            $offset = $match[0][1] + strlen($match[0][0]);
            $this->leave(strtolower($match[0][0]));
        }
    }

    private function leave(string $exit): void
    {
        switch ($this->place) {
            case self::TEXT:
                $this->place = $exit === '<!--' ? self::COMMENT : self::TAG;
                $this->behindTag = ['<script' => self::SCRIPT, '<style' => self::STYLE][$exit] ?? self::TEXT;
                break;
            case self::TAG:
                $this->place = match (true) {
                    $exit === '>' => $this->behindTag,
                    str_ends_with($exit, '"') => self::DOUBLE_QUOTED,
                    str_ends_with($exit, "'") => self::SINGLE_QUOTED,
                    default => self::UNQUOTED,
                };
                break;
            case self::COMMENT:
                $this->place = self::TEXT;
                break;
            case self::SCRIPT:
            case self::STYLE:
                $this->behindTag = self::TEXT;
                // The closing tag ends as any other.
            default:
                $this->place = self::TAG;
        }
    }
}
