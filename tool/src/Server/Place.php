<?php

namespace TemplateTool\Server;

use TemplateTool\Syntax\Document;

/** Where in an open text a request points. */
final class Place
{
    public function __construct(
        public readonly Folder $folder,
        public readonly string $path,
        public readonly Document $document,
        public readonly int $offset,
    ) {
    }
}
