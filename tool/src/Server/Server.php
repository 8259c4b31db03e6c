<?php

namespace TemplateTool\Server;

/**
 * The message loop of the language server: takes messages in their order, answers requests, and uses the time in which
 * nothing comes for the session's own work. No message and no failure of a handler ends it.
 */
final class Server
{
    /** @var list<array> messages that wait for their turn */
    private array $queue = [];

    /** @var array<string, callable(array): mixed> by method */
    private array $handlers = [];

    /** The request that is being answered, and whether it was called off meanwhile. */
    private int|string|null $current = null;
    private bool $isCancelled = false;

    private bool $isInitialized = false;
    private bool $isShutDown = false;
    private int $asked = 0;

    public function __construct(private Transport $transport)
    {
    }

    /**
     * Serves until the client says "exit" or goes away.
     *
     * $work: does a small piece of what is left to do; false when nothing is.
     *
     * @param array<string, callable(array): mixed> $handlers by method
     * @return int the exit status: 0 after an orderly end
     */
    public function run(array $handlers, callable $work): int
    {
        $this->handlers = $handlers;
        try {
            while (($message = $this->next($work)) !== null) {
                if (($message['method'] ?? null) === 'exit') {
                    break;
                }
                $this->handle($message);
            }
            return $this->isShutDown ? 0 : 1;
        } catch (Closed) {
            return 1;
        }
    }

    public function notify(string $method, array $parameters): void
    {
        $this->transport->send(['method' => $method, 'params' => $parameters]);
    }

    /** Asks the client to do something; nothing here depends on its answer. */
    public function ask(string $method, array $parameters): void
    {
        $this->transport->send(['id' => 'server-' . ++$this->asked, 'method' => $method, 'params' => $parameters]);
    }

    /** Whether a message waits: work that can wait should make room for it. */
    public function isWanted(): bool
    {
        $this->poll();
        return $this->queue !== [] || $this->transport->isOver();
    }

    /** To be called now and then while a request is answered. @throws ResponseError when it was called off */
    public function yield(): void
    {
        $this->poll();
        if ($this->isCancelled) {
            throw ResponseError::cancelled();
        }
    }

    private function next(callable $work): ?array
    {
        while (true) {
            $this->poll();
            if ($this->queue) {
                return array_shift($this->queue);
            }
            if ($this->transport->isOver()) {
                return null;
            }
            try {
                $isBusy = $this->isInitialized && !$this->isShutDown && $work();
            } catch (Closed $end) {
                throw $end;
            } catch (\Throwable $failure) {
                $isBusy = true;
                $this->log($failure);
            }
            $message = $isBusy ? null : $this->transport->receive(null);
            if ($message !== null) {
                $this->enqueue($message);
            }
        }
    }

    private function poll(): void
    {
        while (($message = $this->transport->receive(0.0)) !== null) {
            $this->enqueue($message);
        }
    }

    private function enqueue(array $message): void
    {
        $method = $message['method'] ?? null;
        if ($method === null && (array_key_exists('result', $message) || array_key_exists('error', $message))) {
            // Answers to what this side has asked need no reaction, and interrupt nothing.
            return;
        }
        if ($method !== '$/cancelRequest') {
            $this->queue[] = $message;
            return;
        }
        $id = $message['params']['id'] ?? null;
        $this->isCancelled = $this->isCancelled || ($id !== null && $id === $this->current);
        foreach ($this->queue as $i => $waiting) {
            if ($id !== null && ($waiting['id'] ?? null) === $id && isset($waiting['method'])) {
                array_splice($this->queue, $i, 1);
                $this->refuse($id, ResponseError::cancelled());
                return;
            }
        }
    }

    private function handle(array $message): void
    {
        $method = $message['method'] ?? null;
        $id = $message['id'] ?? null;
        if (!is_string($method)) {
            $error = new ResponseError(ResponseError::INVALID_REQUEST, 'no method');
            $this->refuse(self::isId($id) ? $id : null, $error);
            return;
        }
        if ($id !== null && !self::isId($id)) {
            $this->refuse(null, new ResponseError(ResponseError::INVALID_REQUEST, 'an id is a number or a text'));
            return;
        }
        $this->current = $id;
        $this->isCancelled = false;
        try {
            $result = $this->result($method, $message['params'] ?? [], $id !== null);
            if ($id !== null) {
                $this->transport->send(['id' => $id, 'result' => $result]);
            }
        } catch (Closed $end) {
            throw $end;
        } catch (ResponseError $error) {
            $id === null || $this->refuse($id, $error);
        } catch (\Throwable $failure) {
            $this->log($failure);
            $id === null || $this->refuse($id, new ResponseError(ResponseError::INTERNAL, $failure->getMessage()));
        }
        $this->current = null;
    }

    /** @throws ResponseError */
    private function result(string $method, mixed $parameters, bool $isRequest): mixed
    {
        if ($method === 'initialize' && $this->isInitialized) {
            throw new ResponseError(ResponseError::INVALID_REQUEST, 'initialized already');
        }
        if ($method !== 'initialize' && !$this->isInitialized) {
            throw new ResponseError(ResponseError::NOT_INITIALIZED, 'not initialized');
        }
        if ($this->isShutDown) {
            throw new ResponseError(ResponseError::INVALID_REQUEST, 'shut down already');
        }
        if ($method === 'shutdown') {
            $this->isShutDown = true;
            return null;
        }
        if (!isset($this->handlers[$method])) {
            throw new ResponseError(ResponseError::UNKNOWN_METHOD, "unknown method $method");
        }
        if (!is_array($parameters)) {
            throw new ResponseError(ResponseError::INVALID_PARAMETERS, 'parameters are an object');
        }
        try {
            $result = $this->handlers[$method]($parameters);
        } catch (\TypeError $error) {
            // Parameters of the wrong types end here; a mistake of our own is told as well.
            $this->log($error);
            throw new ResponseError(ResponseError::INVALID_PARAMETERS, 'parameters of a wrong type');
        }
        $this->isInitialized = $this->isInitialized || $method === 'initialize';
        return $result;
    }

    private function refuse(int|string|null $id, ResponseError $error): void
    {
        $this->transport->send(['id' => $id, 'error' => $error->toArray()]);
    }

    private static function isId(mixed $id): bool
    {
        return is_int($id) || is_string($id);
    }

    private function log(\Throwable $failure): void
    {
        $place = basename($failure->getFile()) . ':' . $failure->getLine();
        $message = get_class($failure) . " in $place: " . $failure->getMessage();
        $this->notify('window/logMessage', ['type' => 1, 'message' => $message]);
    }
}
