<?php

namespace TemplateTool\Fix;

use TemplateTool\Syntax\Source;

/** A change as a unified diff, for people and for "patch". */
final class Diff
{
    private const CONTEXT = 3;

    public static function of(Change $change): string
    {
        $name = $change->source->name;
        $lines = self::lines($change->source->text);
        $text = "--- $name\n+++ $name\n";
        $shift = 0;
        foreach (self::hunks($change, $lines) as $parts) {
            $first = max(0, $parts[0][0] - self::CONTEXT);
            $last = min(count($lines), end($parts)[1] + self::CONTEXT);
            $body = '';
            $growth = 0;
            $copied = $first;
            foreach ($parts as [$from, $to, $new]) {
                $body .= self::prefixed(' ', array_slice($lines, $copied, $from - $copied))
                    . self::prefixed('-', array_slice($lines, $from, $to - $from)) . self::prefixed('+', $new);
                $growth += count($new) - ($to - $from);
                $copied = $to;
            }
            $body .= self::prefixed(' ', array_slice($lines, $copied, $last - $copied));
            $length = $last - $first;
            $text .= sprintf("@@ -%d,%d +%d,%d @@\n", $first + 1, $length, $first + 1 + $shift, $length + $growth) . $body;
            $shift += $growth;
        }
        return $text;
    }

    /**
     * The parts that change: first line, the one behind the last, new lines; near ones together.
     *
     * @return list<non-empty-list<array{int, int, list<string>}>>
     */
    private static function hunks(Change $change, array $lines): array
    {
        $hunks = [];
        $end = 0;
        foreach (self::parts($change) as [$from, $to, $edits]) {
            $offset = strlen(implode('', array_slice($lines, 0, $from)));
            $old = new Source('', implode('', array_slice($lines, $from, $to - $from)));
            $new = (new Change($old, array_map(static fn($edit) => $edit->movedBy(-$offset), $edits)))->after()->text;
            $part = [$from, $to, self::lines($new)];
            if ($hunks && $from - $end <= 2 * self::CONTEXT) {
                $hunks[array_key_last($hunks)][] = $part;
            } else {
                $hunks[] = [$part];
            }
            $end = $to;
        }
        return $hunks;
    }

    /** @return list<array{int, int, list<\TemplateTool\Syntax\Edit>}> the lines that change, with what changes them */
    private static function parts(Change $change): array
    {
        $parts = [];
        foreach ($change->edits as $edit) {
            $from = $change->source->position($edit->offset)[0] - 1;
            $to = $change->source->position($edit->offset + $edit->length)[0];
            $last = array_key_last($parts);
            if ($last !== null && $from < $parts[$last][1]) {
                $parts[$last][1] = max($to, $parts[$last][1]);
                $parts[$last][2][] = $edit;
            } else {
                $parts[] = [$from, $to, [$edit]];
            }
        }
        return $parts;
    }

    /** @return list<string> with their ends */
    private static function lines(string $text): array
    {
        return preg_split('/(?<=\n)(?!\z)/', $text, -1, PREG_SPLIT_NO_EMPTY);
    }

    private static function prefixed(string $sign, array $lines): string
    {
        $text = '';
        foreach ($lines as $line) {
            $text .= $sign . $line . (str_ends_with($line, "\n") ? '' : "\n\\ No newline at end of file\n");
        }
        return $text;
    }
}
