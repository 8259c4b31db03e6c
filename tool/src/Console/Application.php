<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Application as ConsoleApplication;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\OutputInterface;

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
        $this->add(new NeedsCommand());
        $this->add(new ExplainCommand());
        $this->add(new LiteralCommand());
        $this->add(new CompletionCommand());
        $this->add(new LspCommand());
    }

    /** A misspelt command is an error and no question. */
    protected function configureIO(InputInterface $input, OutputInterface $output): void
    {
        parent::configureIO($input, $output);
        $input->setInteractive(false);
    }
}
