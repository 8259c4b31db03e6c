<?php

namespace Template\Psr;

use Psr\Http\Message\ResponseInterface;
use Psr\Http\Message\ServerRequestInterface;
use Psr\Http\Server\RequestHandlerInterface;

/** A page as a PSR-15 handler of requests. */
final class PageHandler implements RequestHandlerInterface
{
    /** @param \Closure(ServerRequestInterface): array $data makes the page's data of the request */
    public function __construct(private Renderer $renderer, private string $name, private \Closure $data)
    {
    }

    public function handle(ServerRequestInterface $request): ResponseInterface
    {
        return $this->renderer->respond($this->name, ($this->data)($request));
    }
}
