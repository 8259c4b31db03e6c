<?php

namespace TemplateTool\Syntax;

/** The text of a template under the name that messages show. */
final class Source
{
    private const STEP = 256;

    /** @var ?list<int> where the lines begin */
    private ?array $lines = null;

    /** @var array<int, list<int>> by line: how many characters stand in front of each step; none outside of UTF-8 */
    private array $marks = [];

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
        return [$low + 1, 1 + $this->columns($low, $offset - $lines[$low])];
    }

    /** The offset of a position. */
    public function offset(int $line, int $column): int
    {
        return $this->lines()[$line - 1] + strlen(mb_substr($this->line($line), 0, $column - 1));
    }

    /** The text of a line, without its end. */
    public function line(int $number): string
    {
        [$start, $length] = $this->extent($number - 1);
        return rtrim(substr($this->text, $start, $length), "\r");
    }

    /**
     * What stands on a line around a place: at most so many bytes on each side, cut between characters.
     *
     * @return array{string, string}
     */
    public function around(int $number, int $offset, int $most): array
    {
        [$start, $length] = $this->extent($number - 1);
        $before = substr($this->text, max($start, $offset - $most), $offset - max($start, $offset - $most));
        $behind = substr($this->text, $offset, min($most, $start + $length - $offset));
        return [
            $offset - $start > $most ? preg_replace('/^[\x80-\xBF]{1,3}/', '', $before) : $before,
            $start + $length - $offset > $most ? preg_replace('/[\xC0-\xFF][\x80-\xBF]{0,3}$/', '', $behind) : $behind,
        ];
    }

    /** The number of characters: of bytes that don't continue one in UTF-8. */
    public static function length(string $text): int
    {
        return preg_match('//u', $text) ? self::beginnings($text) : strlen($text);
    }

    /** The number of bytes that begin a character. */
    private static function beginnings(string $text): int
    {
        return preg_match_all('/[^\x80-\xBF]/', $text);
    }

    /** The number of characters in the first $length bytes of a line; bytes where the line isn't UTF-8. */
    private function columns(int $line, int $length): int
    {
        [$start, $whole] = $this->extent($line);
        if (!isset($this->marks[$line])) {
            // Counted once: long lines have many places.
            $this->marks[$line] = [];
            if (preg_match('//u', substr($this->text, $start, $whole))) {
                for ($count = $i = 0; $i <= $whole; $i += self::STEP) {
                    $this->marks[$line][] = $count;
                    $count += self::beginnings(substr($this->text, $start + $i, min(self::STEP, $whole - $i)));
                }
            }
        }
        $marks = $this->marks[$line];
        $step = intdiv($length, self::STEP);
        return isset($marks[$step])
            ? $marks[$step] + self::beginnings(substr($this->text, $start + $step * self::STEP, $length % self::STEP))
            : $length;
    }

    /** @return array{int, int} where a line begins, and its length */
    private function extent(int $line): array
    {
        $lines = $this->lines();
        $end = isset($lines[$line + 1]) ? $lines[$line + 1] - 1 : strlen($this->text);
        return [$lines[$line], $end - $lines[$line]];
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
