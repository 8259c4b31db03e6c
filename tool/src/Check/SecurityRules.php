<?php

namespace TemplateTool\Check;

/** The warnings about values that are printed into HTML, given the text around them. */
final class SecurityRules
{
    /** @return \Generator<Node, Problem> */
    public function problems(Document $document): \Generator
    {
        $html = new HtmlPlace();
        $read = 0;
        foreach ($document->nodes as $node) {
            $tag = $node->tag;
            // Closing tags in this text look like nothing that HTML knows.
            $html->read(substr($document->source->text, $read, $node->offset - $read));
            $read = $node->offset + strlen($tag->source) - (int) $tag->swallows;
            $warning = $tag->references ? $this->warning($tag, $html->place) : null;
            if ($warning) {
                yield $node => new Problem($warning[0], $warning[1], $node->offset, $read - $node->offset);
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
