<?php

namespace TemplateTool\Server;

/** What the editor can do, and what is said to it. */
final class Client
{
    private array $capabilities = [];
    private int $works = 0;

    /** How it counts characters; see Lines. */
    public string $encoding = Lines::UTF16;

    public function __construct(private Server $server)
    {
    }

    public function introduce(array $parameters): void
    {
        $this->capabilities = $parameters['capabilities'] ?? [];
        // Before version 3.17 of the protocol some clients offered a choice under a name of their own.
        $offered = $this->capabilities['general']['positionEncodings'] ?? $this->capabilities['offsetEncoding'] ?? [];
        $known = array_intersect((array) $offered, [Lines::UTF8, Lines::UTF16]);
        $this->encoding = reset($known) ?: Lines::UTF16;
    }

    /** Whether it has declared this capability: its path, joined by dots. */
    public function can(string $capability): bool
    {
        $value = $this->capabilities;
        foreach (explode('.', $capability) as $key) {
            $value = $value[$key] ?? null;
        }
        return $value === true;
    }

    public function publish(string $uri, ?int $version, array $diagnostics): void
    {
        $parameters = ['uri' => $uri, 'diagnostics' => $diagnostics];
        $this->server->notify(
            'textDocument/publishDiagnostics',
            $version === null ? $parameters : $parameters + ['version' => $version]
        );
    }

    public function warn(string $message): void
    {
        $this->server->notify('window/showMessage', ['type' => 2, 'message' => $message]);
    }

    /** Whether it can tell of changes on the disk. */
    public function canWatch(): bool
    {
        return $this->can('workspace.didChangeWatchedFiles.dynamicRegistration');
    }

    /** Asks to be told of changes on the disk. @param list<string> $globs */
    public function watch(array $globs): void
    {
        if ($this->canWatch()) {
            $watchers = array_map(static fn(string $glob): array => ['globPattern' => $glob], $globs);
            $this->server->ask('client/registerCapability', ['registrations' => [[
                'id' => 'watch',
                'method' => 'workspace/didChangeWatchedFiles',
                'registerOptions' => ['watchers' => $watchers],
            ]]]);
        }
    }

    /** Begins a piece of work that takes a while. @return callable(?int $percentage): void null when it is over */
    public function progress(string $title): \Closure
    {
        if (!$this->can('window.workDoneProgress')) {
            return static fn() => null;
        }
        $token = 'template-' . ++$this->works;
        $this->server->ask('window/workDoneProgress/create', ['token' => $token]);
        $tell = fn(array $value) => $this->server->notify('$/progress', ['token' => $token, 'value' => $value]);
        $tell(['kind' => 'begin', 'title' => $title, 'percentage' => 0]);
        return static function (?int $percentage) use ($tell): void {
            $tell($percentage === null ? ['kind' => 'end'] : ['kind' => 'report', 'percentage' => $percentage]);
        };
    }
}
