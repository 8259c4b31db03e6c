<?php

namespace Template\Psr;

use Psr\Http\Message\ResponseFactoryInterface;
use Psr\Http\Message\ResponseInterface;
use Psr\Http\Message\StreamFactoryInterface;
use Template\Engine;

/** Makes PSR-7 responses of pages. */
final class Renderer
{
    private const TYPE = 'text/html; charset=utf-8';

    /** Both factories as PSR-17 has them; none of them is needed where the framework hands out responses, as Slim does. */
    public function __construct(
        private Engine $engine,
        private ?ResponseFactoryInterface $responses = null,
        private ?StreamFactoryInterface $streams = null,
    ) {
    }

    /** A new response. @throws \Template\TemplateError @throws \LogicException without the factories */
    public function respond(string $name, array $data = [], int $status = 200): ResponseInterface
    {
        if ($this->responses === null || $this->streams === null) {
            throw new \LogicException('A new response needs the two factories of PSR-17');
        }
        $page = $this->engine->render($name, $data);
        return $this->responses->createResponse($status)
            ->withHeader('Content-Type', self::TYPE)
            ->withBody($this->streams->createStream($page));
    }

    /** The given response with a page written to its body, and a content type if it has none. @throws \Template\TemplateError */
    public function render(ResponseInterface $response, string $name, array $data = []): ResponseInterface
    {
        $response->getBody()->write($this->engine->render($name, $data));
        return $response->hasHeader('Content-Type') ? $response : $response->withHeader('Content-Type', self::TYPE);
    }
}
