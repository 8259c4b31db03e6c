<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Application as ConsoleApplication;

final class Application extends ConsoleApplication
{
    public function __construct()
    {
        parent::__construct('template', phpversion('template') ?: 'without the extension');
        $this->setAutoExit(false);
        $this->setCatchExceptions(false);
        $this->add(new RenderCommand());
        $this->add(new CheckCommand());
        $this->add(new TreeCommand());
        $this->add(new ExplainCommand());
        $this->add(new CompletionCommand());
    }
}
