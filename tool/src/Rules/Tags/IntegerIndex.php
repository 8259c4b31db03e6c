<?php

namespace TemplateTool\Rules\Tags;

use TemplateTool\Rules\TagRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class IntegerIndex implements TagRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'integer-index',
                summary: 'a path that begins with an integer',
                why: <<<'TEXT'
                    A reference that isn't about a loop begins at the top of the data, and there an integer is never
                    found, whether the data has such a key or not. Put the list under a name. To print something
                    like {3} as text, for instance in a regular expression, write the braces twice.
                    TEXT,
                bad: '{0::title}',
                good: '{list::0::title} [a-z]{{3}}',
            ),
        ];
    }

    public function inTag(Tag $tag): iterable
    {
        foreach ($tag->references as $reference) {
            if ($reference->beginsWithInteger()) {
                $message = "\"$reference->text\" finds nothing: at the top of the data no key can be an integer";
                yield new Problem('integer-index', $message, $reference->offset, strlen($reference->text));
            }
        }
    }
}
