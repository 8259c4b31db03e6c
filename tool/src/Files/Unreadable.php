<?php

namespace TemplateTool\Files;

/** A file can't be read as a template. The message says which and why. */
final class Unreadable extends \RuntimeException
{
    public function __construct(public readonly string $path, public readonly string $reason)
    {
        parent::__construct("$path: $reason");
    }
}
