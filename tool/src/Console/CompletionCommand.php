<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Output\OutputInterface;

/** In place of the console library's own, whose script knows no file names and needs another package. */
final class CompletionCommand extends Command
{
    protected function configure(): void
    {
        $this->setName('completion')
            ->setDescription('Prints the completion script for bash and zsh')
            ->setHelp(<<<'HELP'
                Put this into <info>~/.bashrc</info>:

                  <info>eval "$(template completion)"</info>

                and this into <info>~/.zshrc</info>:

                  <info>autoload -U compinit bashcompinit && compinit && bashcompinit</info>
                  <info>eval "$(template completion)"</info>
                HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $output->write(file_get_contents(dirname(__DIR__, 2) . '/completion.bash'), false, OutputInterface::OUTPUT_RAW);
        return Start::GOOD;
    }
}
