<?php

namespace TemplateTool\Syntax;

/** Turns the text of a tag into what is known about it. The engine judges; the same text is judged once. */
final class TagReader
{
    private const BLANKS = " \t\n\r\v\f";
    private const MOST_KNOWN = 20000;
    private const LONGEST_KNOWN = 200;

    /** @var array<string, Tag> */
    private array $known = [];

    /** @var array<string, ?string> */
    private array $endings = [];

    public function __construct(private Engine $engine)
    {
    }

    /** $source: a tag as Document cuts it. */
    public function read(string $source): Tag
    {
        if (isset($this->known[$source])) {
            return $this->known[$source];
        }
        $tag = $this->make($source);
        if (strlen($source) <= self::LONGEST_KNOWN) {
            if (count($this->known) >= self::MOST_KNOWN) {
                $this->known = [];
            }
            $this->known[$source] = $tag;
        }
        return $tag;
    }

    /** What the engine says against a closing tag, when $open is the innermost block that is open. */
    public function endComplaint(Tag $end, ?Kind $open): ?string
    {
        $question = ($open ? '{' . $open->value . ' x}' : '') . $end->source;
        if (strlen($question) > self::LONGEST_KNOWN) {
            return $this->engine->complaint($question);
        }
        return array_key_exists($question, $this->endings)
            ? $this->endings[$question]
            : $this->endings[$question] = $this->engine->complaint($question);
    }

    private function make(string $source): Tag
    {
        $swallows = str_ends_with($source, '{');
        $isCutOff = !$swallows && !str_ends_with($source, '}');
        // A tag that swallows the rest consists of its beginning and one brace for each byte that follows.
        $text = substr($source, 1, $swallows || $isCutOff ? null : -1);
        $kind = Kind::of($text);
        $behind = substr($text, strlen($kind->value));
        $argument = trim($behind, self::BLANKS);
        $offset = 1 + strlen($kind->value) + strlen($behind) - strlen(ltrim($behind, self::BLANKS));

        $tag = new Tag($source, $kind, $text, $argument, $offset, $swallows, $isCutOff);
        if ($kind->isLoop() && str_contains($argument, ',')) {
            $tag->name = strstr($argument, ',', true);
        }
        $tag->complaint = $kind->isEnd() ? null : $this->engine->complaint(...$this->question($tag));
        if ($tag->complaint === null) {
            $this->takeApart($tag);
        }
        return $tag;
    }

    /** @return array{string, array} a template that holds this tag and is right when the tag is, and its data */
    private function question(Tag $tag): array
    {
        if ($tag->kind === Kind::Include) {
            // The data gives an empty file name, which is left out in silence: no file is opened.
            return [$tag->source, $tag->argument === '' ? [] : Engine::dataWith(explode('::', $tag->argument), '')];
        }
        $end = $tag->kind->end();
        return [$tag->source . ($end && !$tag->swallows && !$tag->isCutOff ? '{' . $end->value . '}' : ''), []];
    }

    private function takeApart(Tag $tag): void
    {
        $argument = $tag->argument;
        switch ($tag->kind) {
            case Kind::Plain:
                preg_match_all("/'.*\\z|[^ \\t\\n\\r\\v\\f]+/s", $argument, $parts, PREG_OFFSET_CAPTURE);
                foreach ($parts[0] as [$part, $offset]) {
                    if ($part[0] === "'") {
                        $tag->fallback = substr($part, 1, -1);
                    } else {
                        $tag->references[] = new Reference($part, $tag->argumentOffset + $offset);
                    }
                }
                break;
            case Kind::Optional:
            case Kind::NotOptional:
                [$reference, $tag->compared] = explode(' ', $argument, 2) + [1 => ''];
                $tag->references[] = new Reference($reference, $tag->argumentOffset);
                break;
            case Kind::Dynamic:
            case Kind::Rdynamic:
                $start = str_contains($argument, ',') ? strlen($tag->name) + 1 : 0;
                $tag->references[] = new Reference(substr($argument, $start), $tag->argumentOffset + $start);
                break;
            case Kind::OptionalEnd:
            case Kind::DynamicEnd:
            case Kind::RdynamicEnd:
                break;
            default:
                $tag->references[] = new Reference($argument, $tag->argumentOffset);
        }
    }
}
