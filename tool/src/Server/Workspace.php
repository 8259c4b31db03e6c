<?php

namespace TemplateTool\Server;

use TemplateTool\Files\Unreadable;
use TemplateTool\Project\Project;
use TemplateTool\Syntax\Document;
use TemplateTool\Syntax\Documents;
use TemplateTool\Syntax\Source;

/** What the editor has open: folders and texts. */
final class Workspace
{
    public readonly Documents $documents;

    /** @var array<string, OpenText> by path */
    private array $open = [];

    /** @var array<string, true> the folders that the editor has open */
    private array $roots = [];

    /** @var array<string, Folder> by path */
    private array $folders = [];

    /** @var array<string, string> by the path of a folder: that of the project it belongs to */
    private array $known = [];

    /** @var array<string, Lines> by path, of texts that aren't open */
    private array $lines = [];

    public function __construct(private Client $client)
    {
        $this->documents = new Documents();
    }

    public function addFolder(string $uri): void
    {
        $path = Uri::path($uri);
        if (Uri::isFile($uri) && is_dir($path)) {
            $this->roots[$path] = true;
            $this->known = [];
        }
    }

    public function removeFolder(string $uri): void
    {
        unset($this->roots[Uri::path($uri)]);
        $this->folders = $this->known = [];
    }

    /** @return list<Folder> the projects that are known by now, those of the editor's folders included */
    public function folders(): array
    {
        foreach ($this->roots as $path => $_) {
            $this->folderOf("$path/any");
        }
        return array_values($this->folders);
    }

    /** The project that a file belongs to: that of the next project file above it, else of the editor's folder. */
    public function folderOf(string $path): Folder
    {
        $beside = str_starts_with($path, '/') ? dirname($path) : (string) array_key_first($this->roots);
        $beside = $beside === '' ? (string) getcwd() : $beside;
        $root = $this->known[$beside] ??= $this->rootOf($beside);
        return $this->folders[$root] ??= new Folder($root, $this);
    }

    /** Project files, sample data or templates have changed on the disk. */
    public function forget(): void
    {
        $this->known = [];
        foreach ($this->folders as $folder) {
            $folder->forget();
        }
    }

    private function rootOf(string $folder): string
    {
        $file = Project::findFile($folder);
        $root = $file === null ? '' : dirname($file);
        foreach ($file === null ? array_keys($this->roots) : [] as $each) {
            $isAround = str_starts_with("$folder/", rtrim($each, '/') . '/');
            $root = $isAround && strlen($each) > strlen($root) ? $each : $root;
        }
        return $root === '' ? $folder : $root;
    }

    public function opened(string $uri, string $text, int $version): OpenText
    {
        $path = Uri::path($uri);
        return $this->open[$path] = new OpenText($uri, $path, $version, $text, $this->client->encoding);
    }

    public function closed(string $path): void
    {
        unset($this->open[$path]);
    }

    public function open(string $path): ?OpenText
    {
        return $this->open[$path] ?? null;
    }

    /** @return array<string, OpenText> by path: the templates that are open */
    public function templates(): array
    {
        return array_filter($this->open, $this->isTemplate(...), ARRAY_FILTER_USE_KEY);
    }

    /** Whether a text of this path is a template: editors hand over project files and sample data as well. */
    public function isTemplate(string $path): bool
    {
        return !str_ends_with(strtolower($path), '.json') || $this->folderOf($path)->isTemplate(basename($path));
    }

    /** @return array<string, string> by path: the texts that count in place of the files */
    public function texts(): array
    {
        return array_map(static fn(OpenText $open): string => $open->text(), $this->open);
    }

    /** The address that the editor knows a file by. */
    public function uri(string $path): string
    {
        return $this->open($path)?->uri ?? Uri::ofPath($path);
    }

    public function lines(Source $source): Lines
    {
        $path = $source->path === '' ? $source->name : $source->path;
        $open = $this->open($path);
        if ($open && $open->text() === $source->text) {
            return $open->lines();
        }
        $known = $this->lines[$path] ?? null;
        if ($known?->text !== $source->text) {
            $this->lines = count($this->lines) > 200 ? [] : $this->lines;
            $known = $this->lines[$path] = new Lines($source->text, $this->client->encoding, true);
        }
        return $known;
    }

    /** The template at a path as the editor has it, else as it is on the disk; null when it can't be read. */
    public function document(string $path): ?Document
    {
        try {
            $open = $this->open($path);
            $isFile = $open === null || Uri::isFile($open->uri);
            return $this->documents->of(
                $isFile ? $this->folderOf($path)->files($path)->read($path) : new Source($path, $open->text())
            );
        } catch (Unreadable) {
            return null;
        }
    }

    /**
     * What the parameters of a request point at.
     *
     * @throws ResponseError
     */
    public function place(array $parameters): Place
    {
        $uri = $parameters['textDocument']['uri'] ?? null;
        if (!is_string($uri)) {
            throw new ResponseError(ResponseError::INVALID_PARAMETERS, 'there is no uri');
        }
        $path = Uri::path($uri);
        $document = $this->document($path);
        if (!$document) {
            throw new ResponseError(ResponseError::FAILED, "$path can't be read as a template");
        }
        $offset = $this->lines($document->source)->offset($parameters['position'] ?? []);
        return new Place($this->folderOf($path), $path, $document, $offset);
    }

    /** @return array{uri: string, range: array} */
    public function location(Source $source, int $offset, int $length): array
    {
        $path = $source->path === '' ? $source->name : $source->path;
        return ['uri' => $this->uri($path), 'range' => $this->lines($source)->range($offset, $length)];
    }
}
