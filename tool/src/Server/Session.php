<?php

namespace TemplateTool\Server;

/** One editor's visit: what it may ask for, and what it tells. */
final class Session
{
    private Client $client;
    private Workspace $workspace;
    private Diagnostics $diagnostics;

    /** @var list<string> folders that the editor has open from the start */
    private array $roots = [];

    public function __construct(private Server $server)
    {
        $this->client = new Client($server);
        $this->workspace = new Workspace($this->client);
        $this->diagnostics = new Diagnostics($this->client, $this->workspace);
    }

    /** @return array<string, callable(array): mixed> by method */
    public function handlers(): array
    {
        $navigation = new Navigation($this->server, $this->workspace);
        $completion = new Completion($this->client, $this->workspace);
        $symbols = new Symbols($this->workspace);
        $nothing = static fn() => null;
        return [
            'initialize' => $this->initialize(...),
            'initialized' => $this->initialized(...),
            'textDocument/didOpen' => $this->opened(...),
            'textDocument/didChange' => $this->changed(...),
            'textDocument/didClose' => $this->closed(...),
            'textDocument/didSave' => $this->filesChanged(...),
            'workspace/didChangeWatchedFiles' => $this->filesChanged(...),
            'workspace/didChangeConfiguration' => $this->filesChanged(...),
            'workspace/didChangeWorkspaceFolders' => $this->foldersChanged(...),
            'textDocument/definition' => $navigation->definition(...),
            'textDocument/references' => $navigation->references(...),
            'textDocument/documentHighlight' => $navigation->highlight(...),
            'textDocument/prepareRename' => $navigation->prepareRename(...),
            'textDocument/rename' => $navigation->rename(...),
            'textDocument/completion' => $completion->complete(...),
            'textDocument/hover' => (new Hover($this->workspace, $this->diagnostics))->hover(...),
            'textDocument/documentSymbol' => $symbols->symbols(...),
            'textDocument/foldingRange' => $symbols->folding(...),
            'textDocument/codeAction' => (new Actions($this->workspace, $this->diagnostics))->actions(...),
            '$/setTrace' => $nothing,
            '$/progress' => $nothing,
            'window/workDoneProgress/cancel' => $nothing,
        ];
    }

    /** Does a piece of what is left to do; false when nothing is. */
    public function work(): bool
    {
        foreach ($this->workspace->folders() as $folder) {
            if (!$folder->includes->isKnown()) {
                $this->read($folder);
                return true;
            }
        }
        return $this->diagnostics->work();
    }

    private function initialize(array $parameters): array
    {
        $this->client->introduce($parameters);
        $this->roots = array_column($parameters['workspaceFolders'] ?? [], 'uri');
        if (!$this->roots && isset($parameters['rootUri'])) {
            $this->roots = [$parameters['rootUri']];
        }
        array_map($this->workspace->addFolder(...), $this->roots);
        return [
            'capabilities' => [
                'positionEncoding' => $this->client->encoding,
                'textDocumentSync' => ['openClose' => true, 'change' => 2, 'save' => true],
                'definitionProvider' => true,
                'referencesProvider' => true,
                'documentHighlightProvider' => true,
                'renameProvider' => $this->client->can('textDocument.rename.prepareSupport')
                    ? ['prepareProvider' => true]
                    : true,
                'completionProvider' => ['triggerCharacters' => ['{', '/', ':', ' ', ',']],
                'hoverProvider' => true,
                'documentSymbolProvider' => true,
                'foldingRangeProvider' => true,
                'codeActionProvider' => ['codeActionKinds' => ['quickfix', 'source.fixAll']],
                'workspace' => ['workspaceFolders' => ['supported' => true, 'changeNotifications' => true]],
            ],
            'serverInfo' => ['name' => 'template', 'version' => phpversion('template')],
            // As clients read it that negotiated this before the protocol knew it.
            'offsetEncoding' => $this->client->encoding,
        ];
    }

    private function initialized(): void
    {
        $globs = ['**/template.json', '**/*.json'];
        foreach ($this->workspace->folders() as $folder) {
            array_push($globs, ...array_map(static fn(string $name): string => "**/$name", $folder->patterns()));
        }
        $this->client->watch(array_values(array_unique($globs)));
    }

    private function opened(array $parameters): void
    {
        $document = $parameters['textDocument'];
        $open = $this->workspace->opened($document['uri'], $document['text'], $document['version'] ?? 0);
        $this->diagnostics->changed($open->path);
    }

    private function changed(array $parameters): void
    {
        $document = $parameters['textDocument'];
        $open = $this->workspace->open(Uri::path($document['uri']));
        if ($open) {
            array_map($open->change(...), $parameters['contentChanges']);
            $open->version = $document['version'] ?? $open->version;
            $this->diagnostics->changed($open->path);
        }
    }

    private function closed(array $parameters): void
    {
        $path = Uri::path($parameters['textDocument']['uri']);
        $this->workspace->closed($path);
        $this->workspace->folderOf($path)->includes->readFile($path);
        $this->diagnostics->everything();
    }

    /** Files, or all that is known of them: without a list it is a template or the settings. */
    private function filesChanged(array $parameters): void
    {
        foreach ($parameters['changes'] ?? [] as $change) {
            $path = Uri::path($change['uri']);
            $folder = $this->workspace->folderOf($path);
            if ($folder->isTemplate(basename($path))) {
                $folder->includes->changed($path);
            }
        }
        $this->workspace->forget();
        $this->diagnostics->everything();
    }

    private function foldersChanged(array $parameters): void
    {
        array_map($this->workspace->removeFolder(...), array_column($parameters['event']['removed'], 'uri'));
        array_map($this->workspace->addFolder(...), array_column($parameters['event']['added'], 'uri'));
        $this->filesChanged([]);
    }

    /** Reads a project for the first time; a message interrupts it, and the next time it goes on from there. */
    private function read(Folder $folder): void
    {
        $progress = null;
        try {
            $folder->includes->read(function (int $percentage) use ($folder, &$progress): void {
                $progress ??= $this->client->progress("Reading the templates of $folder->path");
                $progress($percentage);
                if ($this->server->isWanted()) {
                    throw ResponseError::cancelled();
                }
            });
            $this->diagnostics->everything();
        } catch (ResponseError) {
        } finally {
            $progress && $progress(null);
        }
    }
}
