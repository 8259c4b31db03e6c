<?php

namespace TemplateTool\Json;

use TemplateTool\Syntax\Source;

/** A text is no JSON, or not what it should say. The message begins with the file and, where it is known, the place. */
final class Broken extends \RuntimeException
{
    public static function at(Source $source, int $offset, string $problem): self
    {
        [$line, $column] = $source->position($offset);
        return new self("$source->name:$line:$column: $problem");
    }
}
