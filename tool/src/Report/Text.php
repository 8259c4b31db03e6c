<?php

namespace TemplateTool\Report;

use TemplateTool\Check\Finding;

/** Findings for people: the place, the message, the line with the faulty part underlined. */
final class Text
{
    private const WIDTH = 100;
    private const BEFORE = 20;

    public function __construct(private Paint $paint)
    {
    }

    public function one(Finding $finding): string
    {
        $colour = $finding->isError() ? 'red' : 'yellow';
        $place = self::visible($finding->source->name)
            . ($finding->isUnreadable() ? ':' : ":$finding->line:$finding->column:");
        $name = $finding->name === null ? '' : ' ' . ($this->paint)("[$finding->name]", $colour);
        $text = ($this->paint)($place, '', 'bold') . ' ' . ($this->paint)("$finding->severity:", $colour, 'bold')
            . ' ' . self::visible($finding->message) . "$name\n"
            . ($finding->isUnreadable() ? '' : $this->excerpt($finding, $colour));
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
        // Of a long line, the part around the place.
        [$before, $behind] = $finding->source->around($finding->line, $finding->offset, 4 * self::WIDTH);
        $encoding = preg_match('//u', $before . $behind) === 1 ? 'UTF-8' : 'ISO-8859-1';
        $before = mb_convert_encoding($before, 'UTF-8', $encoding);
        $behind = mb_convert_encoding(rtrim($behind, "\r"), 'UTF-8', $encoding);
        $length = $finding->endLine === $finding->line
            ? $finding->endColumn - $finding->column
            : mb_strlen($behind) + 1;

        $shown = max(self::BEFORE, self::WIDTH - mb_strlen($behind));
        $isCut = $shown < $finding->column - 1;
        $before = ($isCut ? '…' : '') . self::visible($isCut ? mb_substr($before, -$shown) : $before);
        $room = max(1, self::WIDTH - mb_strwidth($before));
        $marked = self::visible(mb_substr($behind, 0, min($length, $room)));
        $rest = self::visible(mb_substr($behind, $length, max(0, $room - $length)));
        $more = mb_strlen($behind) > max($length, $room) || $length > $room ? '…' : '';

        $number = ' ' . $finding->line . ' ';
        $bar = ($this->paint)('|', 'cyan');
        return ($this->paint)($number, 'cyan') . "$bar " . rtrim("$before$marked$rest$more") . "\n"
            . str_repeat(' ', strlen($number)) . "$bar " . str_repeat(' ', mb_strwidth($before))
            . ($this->paint)('^' . str_repeat('~', max(0, mb_strwidth($marked) - 1)), $colour, 'bold') . "\n";
    }
}
