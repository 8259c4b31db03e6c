<?php

namespace TemplateTool\Rules\Code;

use TemplateTool\Rules\DocumentRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

final class LostText implements DocumentRule
{
    // What a declaration or a statement begins with. Names of values look different.
    private const CODE = '~^"?[\w-]+"?\s*:(?!:)|[;=(+]|^(?:return|throw|case|import|export|var|let|const|default|new|typeof)\s~';

    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'lost-text',
                summary: 'CSS or JavaScript that is taken for a tag',
                why: <<<'TEXT'
                    In style sheets and scripts a "{" with no blank behind it begins a tag as well. Most such tags find
                    nothing and are printed as they stand, but with a text in single quotes at the end only that text
                    is left: "h1{font-family: 'Arial'}" prints "h1Arial". Put a blank behind the brace or write both
                    braces twice.
                    TEXT,
                bad: "<style>h1{font-family: 'Arial'}</style>",
                good: "<style>h1{ font-family: 'Arial' } h2{{font-family: 'Arial'}} p{margin:0}</style>",
            ),
        ];
    }

    public function inDocument(Document $document): iterable
    {
        foreach ($document->tags as $i => $tag) {
            $offset = $document->offsets[$i];
            if ($document->code->has($offset) && $this->isCode($tag)) {
                $message = $tag->fallback === null
                    ? 'this brace begins a tag, which the engine refuses: write it twice, or with a blank behind it'
                    : "only \"$tag->fallback\" is left of this, since the brace begins a tag: write both braces twice,"
                        . ' or the first with a blank behind it';
                yield new Problem('lost-text', $message, $offset, strlen($tag->source));
            }
        }
    }

    private function isCode(Tag $tag): bool
    {
        return $tag->kind === Kind::Plain && !$tag->swallows
            && ($tag->complaint !== null || ($tag->fallback !== null && $tag->references))
            && preg_match(self::CODE, $tag->argument) === 1;
    }
}
