<?php

namespace TemplateTool\Syntax;

/** Texts that are no templates, as templates that print them. */
final class Literal
{
    // A brace that begins a tag or stands for one of two. The empty tag prints itself.
    private const READ = '~\{\}(*SKIP)(*FAIL)|\{(?![ \t\n\r]|\z)|\}\}~';

    /** A template that prints exactly this text, which may hold any bytes. One that does so already stays as it is. */
    public static function of(string $text): string
    {
        return self::fault($text) === null ? $text : strtr($text, ['{' => '{{', '}' => '}}']);
    }

    /** Where a text is, read as a template, first taken for something else than itself; null when it nowhere is. */
    public static function fault(string $text): ?int
    {
        return preg_match(self::READ, $text, $match, PREG_OFFSET_CAPTURE) ? $match[0][1] : null;
    }
}
