<?php

namespace TemplateTool\Rules\Foreign;

use TemplateTool\Rules\Habit;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class Filter implements Habit
{
    private const ESCAPINGS = [
        'e' => 'htmlspecialchars', 'escape' => 'htmlspecialchars', 'h' => 'htmlspecialchars', 'html' => 'htmlspecialchars',
        'url_encode' => 'rawurlencode', 'url' => 'rawurlencode', 'urlencode' => 'rawurlencode',
    ];

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'filter',
                summary: 'a filter or modifier behind a name',
                why: <<<'TEXT'
                    There are no filters: "name|upper" is looked for as a value of that name. Escaping is done by the
                    tags "htmlspecialchars", "htmlentities", "addslashes" and "rawurlencode"; anything else is done in
                    PHP, which hands over the finished text.
                    TEXT,
                bad: '{name|escape}',
                good: '{htmlspecialchars name}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->kind === Kind::Include ? [] : Words::of($tag) as [$word, $offset]) {
            if (!preg_match('~(?<!\|)\|(?!\|)~', $word)) {
                continue;
            }
            $name = preg_match('~\|\s*(\w+)(.*)~s', substr($tag->source, $offset), $match) ? $match[1] : '';
            $subject = rtrim(explode('|', substr($tag->argument, 0, strcspn($tag->argument, '|')))[0]);
            $subject = Words::translated(strrchr(" $subject", ' '));
            $keyword = self::ESCAPINGS[$name] ?? null;
            $message = match (true) {
                $keyword !== null => "there are no filters: write \"{{$keyword} " . trim($subject) . '}"',
                $name === 'raw' => 'there are no filters, and a plain tag escapes nothing: write "{' . trim($subject) . '}"',
                $name === 'default' => 'there are no filters: write "{' . trim($subject) . ' \'the text\'}"',
                default => 'there are no filters: hand over the finished text',
            };
            yield new Problem('filter', $message, $offset, strlen($word), unless: Words::meant($tag, $word));
            return;
        }
    }
}
