<?php

namespace TemplateTool\Rules\Security;

use TemplateTool\Rules\View;
use TemplateTool\Rules\ViewRule;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Kind;
use TemplateTool\Syntax\Problem;
use TemplateTool\Syntax\Tag;

/** The warnings about values that are printed into HTML, given the text around them. */
final class Escaping implements ViewRule
{
    public static function warnings(): array
    {
        return [
            new Warning(
                name: 'unescaped-value',
                summary: 'a value that is printed into HTML without an escaping tag',
                why: <<<'TEXT'
                    A plain tag prints the value as it is. If a visitor can have a say in it, it may hold a script.
                    Use {htmlspecialchars ...} in text and in attributes with double quotes. Numbers, and HTML that
                    you trust, need no escaping. With --data, values that are numbers there are left out.
                    TEXT,
                bad: '<p title="{user::name}">',
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'single-quoted-attribute',
                summary: 'an escaped value inside an attribute with single quotes',
                why: <<<'TEXT'
                    "htmlspecialchars" and "htmlentities" leave single quotes as they are, so the value can end the
                    attribute and add others to the element. Put the attribute in double quotes.
                    TEXT,
                bad: "<p title='{htmlspecialchars user::name}'>",
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'unquoted-attribute',
                summary: 'an escaped value as an attribute without quotes',
                why: <<<'TEXT'
                    A blank ends an attribute that has no quotes, and no escaping tag but "rawurlencode" does
                    anything about blanks. Put the attribute in double quotes.
                    TEXT,
                bad: '<p title={htmlspecialchars user::name}>',
                good: '<p title="{htmlspecialchars user::name}">',
                isSecurity: true,
            ),
            new Warning(
                name: 'wrong-escaping',
                summary: "an escaping tag that doesn't fit the place",
                why: <<<'TEXT'
                    "addslashes" is for texts in quotes inside a script and does nothing about "<" or "&".
                    "htmlspecialchars" and "htmlentities" are for HTML; inside a script entities mean nothing.
                    TEXT,
                bad: '<p>{addslashes user::name}</p>',
                good: '<p>{htmlspecialchars user::name}</p>',
                isSecurity: true,
            ),
        ];
    }

    public function inView(View $view): iterable
    {
        $html = new HtmlPlace();
        $read = 0;
        foreach ($view->document->nodes as $node) {
            $tag = $node->tag;
            // Closing tags in this text look like nothing that HTML knows.
            $html->read(substr($view->document->source->text, $read, $node->offset - $read));
            $read = $node->offset + strlen($tag->source) - (int) $tag->swallows;
            $warning = $tag->references ? $this->warning($tag, $html->place) : null;
            if ($warning && !($warning[0] === 'unescaped-value' && $view->printsNumbers($node))) {
                yield new Problem($warning[0], $warning[1], $node->offset, $read - $node->offset);
            }
        }
    }

    /** @return ?array{string, string} */
    private function warning(Tag $tag, string $place): ?array
    {
        $isScript = $place === HtmlPlace::SCRIPT;
        $keyword = $tag->kind->value;
        switch ($tag->kind) {
            case Kind::Plain:
                $advice = $isScript ? '' : '; "htmlspecialchars" would escape it';
                return ['unescaped-value', "this value is printed into HTML ($place) without escaping$advice"];
            case Kind::Addslashes:
                return $isScript ? null : ['wrong-escaping', "\"$keyword\" doesn't escape what matters here ($place)"];
            case Kind::Htmlspecialchars:
            case Kind::Htmlentities:
                if ($isScript) {
                    return ['wrong-escaping', "\"$keyword\" doesn't escape what matters here ($place)"];
                }
                if ($place === HtmlPlace::SINGLE_QUOTED) {
                    $message = "\"$keyword\" leaves single quotes alone: a value can end this single-quoted attribute";
                    return ['single-quoted-attribute', $message];
                }
                if ($place === HtmlPlace::UNQUOTED) {
                    return ['unquoted-attribute', 'a value with a blank ends this attribute, which has no quotes'];
                }
                return null;
            default:
                return null;
        }
    }
}
