<?php

namespace TemplateTool\Syntax;

/** One tag by itself, wherever it stands. Offsets count from its opening brace. */
final class Tag
{
    /** The engine's complaint about this tag, without the name of the template. */
    public ?string $complaint = null;

    /** @var list<Reference> the references it holds; none when the engine complains */
    public array $references = [];

    /** The text in quotes of a plain tag. */
    public ?string $fallback = null;

    /** The value that an optional tag compares with; empty when it asks for truth. */
    public string $compared = '';

    /** The name of a loop. */
    public string $name = '';

    /**
     * $source: as it is written, braces included; a tag that swallows the rest or is cut off has no closing one.
     * $text: what the engine takes for its content.
     */
    public function __construct(
        public readonly string $source,
        public readonly Kind $kind,
        public readonly string $text,
        public readonly string $argument,
        public readonly int $argumentOffset,
        public readonly bool $swallows,
        public readonly bool $isCutOff,
    ) {
    }

    /** The name of the file that an include tag asks for: the data may hold it under the argument. */
    public function includedName(?array $data): string
    {
        $found = $data === null ? null : $this->references[0]->find($data);
        return $found && is_string($found[0]) ? $found[0] : $this->argument;
    }
}
