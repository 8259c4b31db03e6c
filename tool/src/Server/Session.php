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

    /** How many seconds a work may take before the editor is told of it. */
    private const SILENCE = 0.1;

    /** When the reading of a project began, and the editor's view of it; null when there is none. */
    private ?float $readingSince = null;
    private ?\Closure $progress = null;

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
        $handlers = [
            'textDocument/definition' => $navigation->definition(...),
            'textDocument/documentHighlight' => $navigation->highlight(...),
            'textDocument/prepareRename' => $navigation->prepareRename(...),
            'textDocument/rename' => $navigation->rename(...),
            'textDocument/completion' => $completion->complete(...),
            'textDocument/hover' => (new Hover($this->workspace, $this->diagnostics))->hover(...),
            'textDocument/documentSymbol' => $symbols->symbols(...),
            'textDocument/foldingRange' => $symbols->folding(...),
            'textDocument/codeAction' => (new Actions($this->workspace, $this->diagnostics))->actions(...),
        ];
        return array_map($this->ofTemplates(...), $handlers) + [
            'initialize' => $this->initialize(...),
            'initialized' => $this->initialized(...),
            'textDocument/didOpen' => $this->opened(...),
            'textDocument/didChange' => $this->changed(...),
            'textDocument/didClose' => $this->closed(...),
            'textDocument/didSave' => $this->saved(...),
            'workspace/didChangeWatchedFiles' => $this->filesChanged(...),
            'workspace/didChangeConfiguration' => $this->filesChanged(...),
            'workspace/didRenameFiles' => $this->anyFileChanged(...),
            'workspace/didDeleteFiles' => $this->anyFileChanged(...),
            'workspace/didChangeWorkspaceFolders' => $this->foldersChanged(...),
            'textDocument/references' => $navigation->references(...),
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
        // Of a folder that goes its files are not told one by one.
        $folders = ['filters' => [['scheme' => 'file', 'pattern' => ['glob' => '**', 'matches' => 'folder']]]];
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
                'workspace' => [
                    'workspaceFolders' => ['supported' => true, 'changeNotifications' => true],
                    'fileOperations' => ['didRename' => $folders, 'didDelete' => $folders],
                ],
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
        $this->textChanged($open->path);
    }

    private function changed(array $parameters): void
    {
        $document = $parameters['textDocument'];
        $open = $this->workspace->open(Uri::path($document['uri']));
        if ($open) {
            array_map($open->change(...), $parameters['contentChanges']);
            $open->version = $document['version'] ?? $open->version;
            $this->textChanged($open->path);
        }
    }

    private function textChanged(string $path): void
    {
        if ($this->workspace->isTemplate($path)) {
            $this->diagnostics->changed($path);
        } elseif ($this->workspace->folderOf($path)->isSettings($path)) {
            $this->workspace->forget();
            $this->diagnostics->settingsChanged($path);
        }
    }

    private function closed(array $parameters): void
    {
        $path = Uri::path($parameters['textDocument']['uri']);
        $this->workspace->closed($path);
        if ($this->workspace->isTemplate($path)) {
            $this->workspace->folderOf($path)->includes->changed($path, false);
        } else {
            $this->workspace->forget();
        }
        $this->diagnostics->everything();
    }

    /** A handler of requests about templates: about other texts it has nothing to say. */
    private function ofTemplates(callable $handler): callable
    {
        return function (array $parameters) use ($handler): mixed {
            $uri = $parameters['textDocument']['uri'] ?? null;
            $isOther = is_string($uri) && !$this->workspace->isTemplate(Uri::path($uri));
            return $isOther ? null : $handler($parameters);
        };
    }

    /** Those of the list have changed on the disk; without a list, settings may have. */
    private function filesChanged(array $parameters): void
    {
        $isNews = empty($parameters['changes']);
        foreach ($parameters['changes'] ?? [] as $change) {
            $path = Uri::path($change['uri']);
            $folder = $this->workspace->folderOf($path);
            if ($folder->isTemplate(basename($path))) {
                $folder->includes->changed($path);
                $isNews = true;
            } elseif ($folder->isSettings($path)) {
                $isNews = true;
            }
        }
        if ($isNews) {
            $this->workspace->forget();
            $this->diagnostics->everything();
        }
    }

    /** Folders were moved or deleted, or an editor that tells of no changes on the disk has saved something. */
    private function anyFileChanged(): void
    {
        foreach ($this->workspace->folders() as $folder) {
            $folder->includes->doubt();
        }
        $this->filesChanged([]);
    }

    private function saved(): void
    {
        $this->client->canWatch() ? $this->filesChanged([]) : $this->anyFileChanged();
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
        $this->readingSince ??= microtime(true);
        try {
            $folder->includes->read(function (int $percentage) use ($folder): void {
                if (microtime(true) - $this->readingSince > self::SILENCE) {
                    $this->progress ??= $this->client->progress("Reading the templates of $folder->path");
                    ($this->progress)($percentage);
                }
                if ($this->server->isWanted()) {
                    throw ResponseError::cancelled();
                }
            });
        } catch (ResponseError) {
            return;
        }
        $this->progress && ($this->progress)(null);
        $this->readingSince = $this->progress = null;
        $this->diagnostics->everything();
    }
}
