<?php

namespace Template\Symfony;

use Symfony\Component\HttpFoundation\Response;
use Template\Engine;

/** A response whose content is a page. It is rendered at once, so that an error has not sent anything yet. */
final class TemplateResponse extends Response
{
    /** @throws \Template\TemplateError */
    public function __construct(Engine $engine, string $name, array $data = [], int $status = 200, array $headers = [])
    {
        parent::__construct($engine->render($name, $data), $status, $headers);
    }
}
