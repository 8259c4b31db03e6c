<?php

namespace TemplateTool\Syntax;

/** Cuts templates into documents, and keeps them: as long as a text stays the same, so does its document. */
final class Documents
{
    private const MOST_KNOWN = 1000;

    public readonly Engine $engine;
    private TagReader $reader;

    /** @var array<string, Document> by the name of the source */
    private array $known = [];

    public function __construct()
    {
        $this->engine = new Engine();
        $this->reader = new TagReader($this->engine);
    }

    public function of(Source $source): Document
    {
        $known = $this->known[$source->name] ?? null;
        if ($known?->source->path === $source->path && $known->source->text === $source->text) {
            return $known;
        }
        if (count($this->known) >= self::MOST_KNOWN) {
            $this->known = [];
        }
        return $this->known[$source->name] = new Document($source, $this->engine, $this->reader);
    }
}
