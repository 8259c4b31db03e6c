<?php

namespace TemplateTool\Report;

use TemplateTool\Check\Finding;

/** Findings for people: the place, the message, the line with the faulty part underlined. */
final class Text
{
    private const WIDTH = 100;

    public function __construct(private Paint $paint)
    {
    }

    public function one(Finding $finding): string
    {
        $colour = $finding->isError() ? 'red' : 'yellow';
        $place = self::visible($finding->source->name) . ":$finding->line:$finding->column:";
        $name = $finding->name === null ? '' : ' ' . ($this->paint)("[$finding->name]", $colour);
        $text = ($this->paint)($place, '', 'bold') . ' ' . ($this->paint)("$finding->severity:", $colour, 'bold')
            . ' ' . self::visible($finding->message) . "$name\n" . $this->excerpt($finding, $colour);
        $margin = str_repeat(' ', strlen("$finding->line") + 2);
        foreach ($finding->notes as $note) {
            $text .= $margin . ($this->paint)('= ', 'cyan') . self::visible($note) . "\n";
        }
        foreach ($finding->includedFrom as ['file' => $file, 'line' => $line, 'column' => $column]) {
            $text .= $margin . ($this->paint)('= ', 'cyan') . 'included from ' . self::visible($file) . ":$line:$column\n";
        }
        return $text;
    }

    /** Control characters could play tricks with a terminal. */
    public static function visible(string $text): string
    {
        $text = mb_scrub($text, 'UTF-8');
        return preg_replace_callback('/[\x00-\x1F\x7F]|\xC2[\x80-\x9F]/', static fn($match): string =>
            $match[0] === "\n" ? '\n' : ($match[0] === "\t" ? ' ' : "\u{FFFD}"), $text);
    }

    private function excerpt(Finding $finding, string $colour): string
    {
        $line = $finding->source->line($finding->line);
        $isUtf8 = preg_match('//u', $line) === 1;
        $encoding = $isUtf8 ? 'UTF-8' : 'ISO-8859-1';
        $length = $finding->endLine === $finding->line
            ? $finding->endColumn - $finding->column
            : mb_strlen($line, $encoding) - $finding->column + 1;

        // Of a long line, the part around the place.
        $start = max(0, min($finding->column - 1 - 20, mb_strlen($line, $encoding) - self::WIDTH));
        $part = static fn(int $from, int $length): string => self::visible(mb_convert_encoding(
            mb_substr($line, $from, $length, $encoding),
            'UTF-8',
            $encoding
        ));
        $before = ($start > 0 ? '…' : '') . $part($start, $finding->column - 1 - $start);
        $room = max(1, self::WIDTH - mb_strwidth($before));
        $marked = $part($finding->column - 1, min($length, $room));
        $rest = $part($finding->column - 1 + $length, max(0, $room - $length));
        $more = mb_strlen($line, $encoding) > $finding->column - 1 + max($length, $room) || $length > $room ? '…' : '';

        $number = ' ' . $finding->line . ' ';
        $bar = ($this->paint)('|', 'cyan');
        return ($this->paint)($number, 'cyan') . "$bar " . rtrim("$before$marked$rest$more") . "\n"
            . str_repeat(' ', strlen($number)) . "$bar " . str_repeat(' ', mb_strwidth($before))
            . ($this->paint)('^' . str_repeat('~', max(0, mb_strwidth($marked) - 1)), $colour, 'bold') . "\n";
    }
}
