<?php

namespace TemplateTool\Needs;

/** The question of a section around a tag. */
final class Guard
{
    /**
     * $path: null when what is asked about is no value, but a key or nothing. $compared: null when it asks for truth.
     *
     * @param ?list<string> $path
     */
    public function __construct(
        public readonly ?array $path,
        public readonly bool $isNegated,
        public readonly ?string $compared,
    ) {
    }

    /** How many steps of a path this vouches for: those up to the value that it has found to be true. */
    public function covers(array $path): int
    {
        $length = count($this->path ?? []);
        $isOwn = !$this->isNegated && $length > 0 && array_slice($path, 0, $length) === $this->path;
        return $isOwn ? $length : 0;
    }

    /** The same one, with a path that counts from further down. */
    public function from(int $steps): self
    {
        return new self(array_slice($this->path, $steps), $this->isNegated, $this->compared);
    }
}
