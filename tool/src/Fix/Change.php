<?php

namespace TemplateTool\Fix;

use TemplateTool\Syntax\Edit;
use TemplateTool\Syntax\Source;

/** A text and what is to be written in place of some of its parts. */
final class Change
{
    /** @param non-empty-list<Edit> $edits in the order of the text; none overlaps another */
    public function __construct(public readonly Source $source, public readonly array $edits)
    {
    }

    public function after(): Source
    {
        $text = '';
        $copied = 0;
        foreach ($this->edits as $edit) {
            $text .= substr($this->source->text, $copied, $edit->offset - $copied) . $edit->text;
            $copied = $edit->offset + $edit->length;
        }
        return new Source($this->source->name, $text . substr($this->source->text, $copied), $this->source->path);
    }

    /** Writes the new text, unless the file isn't what it was. Returns whether it was written. */
    public function write(): bool
    {
        $text = $this->after()->text;
        return @file_get_contents($this->source->path) === $this->source->text
            && @file_put_contents($this->source->path, $text) === strlen($text);
    }
}
