<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class KeywordPrefix implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'keyword-prefix',
                summary: 'a name that begins with a keyword',
                why: <<<'TEXT'
                    A tag is recognised by how its text begins, and nothing has to separate the keyword from what
                    follows. So "{includes}" isn't a value named "includes": it includes the file "s". A plain tag
                    can't print a value whose name begins with a keyword; keep such values inside an array. When the
                    keyword is meant, write a blank behind it.
                    TEXT,
                bad: '<p>{dynamics_title}</p>{/dynamic}',
                good: '<p>{page::dynamics_title}</p>',
            ),
        ];
    }

    // What may follow a keyword without a blank and still be meant as its argument.
    private const ARGUMENT_STARTS = " \t\n\r\v\f*[,";

    public function inTag(Tag $tag): iterable
    {
        $keyword = $tag->kind->value;
        $behind = substr($tag->text, strlen($keyword), 1);
        if ($keyword === '' || $behind === '' || $behind === '{' || str_contains(self::ARGUMENT_STARTS, $behind)) {
            return;
        }
        $word = strtok($tag->text, " \t\n\r\v\f");
        $message = $tag->kind->isEnd()
            ? "\"$word\" begins with \"$keyword\", so it closes a section"
            : "\"$word\" begins with a keyword, so this is the tag \"$keyword\" with the argument \"$tag->argument\"";
        yield new Problem('keyword-prefix', $message, 1, strlen($word));
    }
}
