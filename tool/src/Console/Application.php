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
        $this->addCommands([
            new RenderCommand(),
            new CheckCommand(),
            new TreeCommand(),
            new NeedsCommand(),
            new ExplainCommand(),
            new LiteralCommand(),
            new CompletionCommand(),
            new LspCommand(),
        ]);
    }

    /** A misspelt command is an error and no question. */
    protected function configureIO(InputInterface $input, OutputInterface $output): void
    {
        parent::configureIO($input, $output);
        $input->setInteractive(false);
    }
}
