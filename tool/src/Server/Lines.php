<?php

namespace TemplateTool\Server;

/**
 * The lines of a text, as the protocol counts them: they end with "\n", "\r\n" or "\r". Positions are
 * ['line' => 0, 'character' => 0]; characters are bytes or UTF-16 units, whichever was agreed upon.
 */
final class Lines
{
    public const UTF8 = 'utf-8';
    public const UTF16 = 'utf-16';

    private const STEP = 256;
    private const MARK = "\xEF\xBB\xBF";

    // In a text that isn't UTF-8 editors show a replacement for each byte that is no part of a character.
    private const CHARACTER = '~[\xC2-\xDF][\x80-\xBF]|[\xE0-\xEF][\x80-\xBF]{2}|[\xF0-\xF4][\x80-\xBF]{3}|.~s';

    /** @var list<int> where the lines begin */
    private array $starts;

    /** @var array<int, list<int>> by line: how many UTF-16 units stand in front of each step of bytes */
    private array $marks = [];

    private bool $isUtf8;

    /** $isFile: the text is a file's. An editor would take the byte order mark away, and begin to count behind it. */
    public function __construct(public readonly string $text, private string $encoding, bool $isFile = false)
    {
        $this->starts = [$isFile && str_starts_with($text, self::MARK) ? strlen(self::MARK) : 0];
        $this->isUtf8 = mb_check_encoding($text, 'UTF-8');
        preg_match_all('/\r\n?|\n/', $text, $ends, PREG_OFFSET_CAPTURE);
        foreach ($ends[0] as [$end, $offset]) {
            $this->starts[] = $offset + strlen($end);
        }
    }

    /** @return array{line: int, character: int} */
    public function position(int $offset): array
    {
        $offset = max(0, min($offset, strlen($this->text)));
        // Between "\r" and "\n" there is no place.
        $offset += (int) (substr($this->text, max(0, $offset - 1), 2) === "\r\n" && $offset > 0);
        $line = $this->lineOf($offset);
        $bytes = max(0, $offset - $this->starts[$line]);
        return ['line' => $line, 'character' => $this->encoding === self::UTF8 ? $bytes : $this->units($line, $bytes)];
    }

    /** @return array{start: array{line: int, character: int}, end: array{line: int, character: int}} */
    public function range(int $offset, int $length): array
    {
        return ['start' => $this->position($offset), 'end' => $this->position($offset + $length)];
    }

    /** Positions behind the end of a line, or of the text, stand for that end. */
    public function offset(array $position): int
    {
        $line = max(0, (int) ($position['line'] ?? 0));
        $character = max(0, (int) ($position['character'] ?? 0));
        if ($line >= count($this->starts)) {
            return strlen($this->text);
        }
        $start = $this->starts[$line];
        $end = $start + strcspn($this->text, "\r\n", $start);
        return $start + $this->bytes($start, $end, $character);
    }

    /** The text with a part of it replaced, as a client reports a change. */
    public function with(array $range, string $new): string
    {
        $start = $this->offset($range['start'] ?? []);
        $end = max($start, $this->offset($range['end'] ?? []));
        return substr_replace($this->text, $new, $start, $end - $start);
    }

    private function lineOf(int $offset): int
    {
        for ($low = 0, $high = count($this->starts) - 1; $low < $high;) {
            $middle = ($low + $high + 1) >> 1;
            if ($this->starts[$middle] <= $offset) {
                $low = $middle;
            } else {
                $high = $middle - 1;
            }
        }
        return $low;
    }

    /** The number of UTF-16 units in the first bytes of a line. Counted once: long lines have many places. */
    private function units(int $line, int $bytes): int
    {
        $start = $this->starts[$line];
        if (!$this->isUtf8) {
            preg_match_all(self::CHARACTER, substr($this->text, $start, $bytes), $characters);
            return count($characters[0]) + count(preg_grep('/^.{4}/s', $characters[0]));
        }
        if (!isset($this->marks[$line])) {
            $end = $this->starts[$line + 1] ?? strlen($this->text);
            $this->marks[$line] = [0];
            for ($count = 0, $i = $start; $i + self::STEP <= $end; $i += self::STEP) {
                $count += self::count(substr($this->text, $i, self::STEP));
                $this->marks[$line][] = $count;
            }
        }
        $step = intdiv($bytes, self::STEP);
        $rest = substr($this->text, $start + $step * self::STEP, $bytes % self::STEP);
        return $this->marks[$line][$step] + self::count($rest);
    }

    /** One for each byte that begins a character, two if the character takes four bytes. */
    private static function count(string $text): int
    {
        return mb_check_encoding($text, 'ASCII')
            ? strlen($text)
            : preg_match_all('/[^\x80-\xBF]/', $text) + preg_match_all('/[\xF0-\xF7]/', $text);
    }

    /** How many bytes of a line this many of its characters take; never a part of one. */
    private function bytes(int $start, int $end, int $wanted): int
    {
        $line = substr($this->text, $start, $end - $start);
        if ($this->encoding === self::UTF8 || mb_check_encoding($line, 'ASCII')) {
            $bytes = min($wanted, strlen($line));
            while ($bytes > 0 && $bytes < strlen($line) && (ord($line[$bytes]) & 0xC0) === 0x80) {
                $bytes--;
            }
            return $bytes;
        }
        preg_match_all($this->isUtf8 ? '/[^\x80-\xBF][\x80-\xBF]*/' : self::CHARACTER, $line, $characters);
        $bytes = 0;
        foreach ($characters[0] as $character) {
            $wanted -= strlen($character) === 4 ? 2 : 1;
            if ($wanted < 0) {
                break;
            }
            $bytes += strlen($character);
        }
        return $bytes;
    }
}
