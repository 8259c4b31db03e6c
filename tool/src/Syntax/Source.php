<?php

namespace TemplateTool\Syntax;

/** The text of a template under the name that messages show. */
final class Source
{
    /** @var ?list<int> where the lines begin */
    private ?array $lines = null;

    /** $path: the file, with its links resolved; empty for a text that is no file. */
    public function __construct(
        public readonly string $name,
        public readonly string $text,
        public readonly string $path = '',
    ) {
    }

    /** @return array{int, int} line and column, both from 1; columns count characters */
    public function position(int $offset): array
    {
        $lines = $this->lines();
        for ($low = 0, $high = count($lines) - 1; $low < $high;) {
            $middle = ($low + $high + 1) >> 1;
            if ($lines[$middle] <= $offset) {
                $low = $middle;
            } else {
                $high = $middle - 1;
            }
        }
        return [$low + 1, 1 + self::length(substr($this->text, $lines[$low], $offset - $lines[$low]))];
    }

    /** The text of a line, without its end. */
    public function line(int $number): string
    {
        $start = $this->lines()[$number - 1];
        return rtrim(substr($this->text, $start, strcspn($this->text, "\n", $start)), "\r");
    }

    /** The number of characters: of bytes that don't continue one in UTF-8. */
    public static function length(string $text): int
    {
        return preg_match('//u', $text) ? preg_match_all('/[^\x80-\xBF]/', $text) : strlen($text);
    }

    /** @return list<int> */
    private function lines(): array
    {
        if ($this->lines === null) {
            $this->lines = [0];
            for ($end = -1; ($end = strpos($this->text, "\n", $end + 1)) !== false;) {
                $this->lines[] = $end + 1;
            }
        }
        return $this->lines;
    }
}
