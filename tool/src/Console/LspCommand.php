<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Server\Server;
use TemplateTool\Server\Session;
use TemplateTool\Server\Transport;

final class LspCommand extends Command
{
    protected function configure(): void
    {
        $this->setName('lsp')
            ->setDescription('Serves editors: findings while one types, ways to includes and loops, completion')
            ->addOption('stdio', null, InputOption::VALUE_NONE, 'As it is without; some editors say so')
            ->setHelp(<<<'HELP'
                A language server: it speaks the Language Server Protocol over the standard input and output. Editors
                start it; the manual's page on editors says how to tell them.

                It checks what is open as <info>template check</info> does, with unsaved changes, and heeds the project
                file <info>template.json</info>.
                HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $server = new Server(new Transport(STDIN, STDOUT));
        $session = new Session($server);
        return $server->run($session->handlers(), $session->work(...));
    }
}
