<?php

namespace TemplateTool\Syntax;

/** Where the texts of scripts and style sheets stand in a page. */
final class CodeRanges
{
    private const BEGINNING = '~<(script|style)(?=[\s>/])~i';

    /** @var list<array{int, int}> beginnings and ends */
    public readonly array $ranges;

    public function __construct(string $text)
    {
        $ranges = [];
        for ($offset = 0; preg_match(self::BEGINNING, $text, $match, PREG_OFFSET_CAPTURE, $offset);) {
            $start = strpos($text, '>', $match[0][1]);
            if ($start === false) {
                break;
            }
            $end = stripos($text, '</' . $match[1][0], $start);
            $offset = $end === false ? strlen($text) : $end;
            $ranges[] = [$start + 1, $offset];
        }
        $this->ranges = $ranges;
    }

    public function has(int $offset): bool
    {
        for ($low = 0, $high = count($this->ranges) - 1; $low <= $high;) {
            $middle = ($low + $high) >> 1;
            if ($offset < $this->ranges[$middle][0]) {
                $high = $middle - 1;
            } elseif ($offset >= $this->ranges[$middle][1]) {
                $low = $middle + 1;
            } else {
                return true;
            }
        }
        return false;
    }
}
