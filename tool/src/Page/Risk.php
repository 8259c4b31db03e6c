<?php

namespace TemplateTool\Page;

/** How a value can break out of its place. */
final class Risk
{
    /** What a plain tag is reported as, wherever it stands. */
    public const UNESCAPED = 'unescaped-value';
    public const WRONG = 'wrong-escaping';

    /**
     * $name: of the warning. $place: what the value is printed into, "a style sheet". $why: what goes wrong there.
     * $advice: what to do instead. $remedy: the escaping that is enough there; null when there is none.
     */
    public function __construct(
        public readonly string $name,
        public readonly string $place,
        public readonly string $why,
        public readonly string $advice,
        public readonly ?Escaping $remedy = null,
    ) {
    }

    /** The usual name: plain tags have theirs, an escaping that doesn't fit another one. */
    public static function of(
        Escaping $given,
        string $place,
        string $why,
        string $advice,
        ?Escaping $remedy = null,
    ): self {
        return new self($given === Escaping::None ? self::UNESCAPED : self::WRONG, $place, $why, $advice, $remedy);
    }

    /** $keyword: of the tag that prints the value; empty for a plain tag. */
    public function message(string $keyword): string
    {
        $advice = $this->advice === '' ? '' : "; $this->advice";
        return $this->name === self::UNESCAPED
            ? "this value is printed into $this->place without escaping$advice"
            : ($keyword === '' ? 'this value' : "\"$keyword\"") . " isn't enough in $this->place: $this->why$advice";
    }
}
