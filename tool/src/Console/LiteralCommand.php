<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Files\Files;
use TemplateTool\Syntax\Literal;
use TemplateTool\Syntax\Source;

final class LiteralCommand extends Command
{
    protected function configure(): void
    {
        $this->setName('literal')
            ->setDescription('Turns any text into a template that prints it')
            ->addArgument('file', InputArgument::OPTIONAL, 'The text (else, or with "-", the standard input)', '-')
            ->addOption('check', null, InputOption::VALUE_NONE, 'Says whether the text, as a template, prints itself')
            ->setHelp(<<<'HELP'
                Prints a template that prints exactly the text, whatever its bytes: a style sheet or a script that is
                to stand in a page, or to be included there. Braces that a template would read are written twice.
                A text that prints itself already is printed as it is.

                  <info>template literal bootstrap.min.css > templates/bootstrap.css.tpl</info>

                With <info>--check</info> nothing is printed but the place of the first brace that the engine would
                take for something else, and the exit status is 1 when there is one.
                HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $file = $input->getArgument('file');
        $text = self::read($file);
        if (!$input->getOption('check')) {
            // Standard output knows no formatting of its own, and any byte.
            fwrite(STDOUT, Literal::of($text));
            return Start::GOOD;
        }
        $offset = Literal::fault($text);
        if ($offset === null) {
            return Start::GOOD;
        }
        $place = implode(':', (new Source($file, $text))->position($offset));
        $name = $file === '-' ? 'standard input' : $file;
        $message = "$name:$place: a template reads this brace; \"template literal\" writes it twice\n";
        $output->write($message, false, OutputInterface::OUTPUT_RAW);
        return Start::FINDINGS;
    }

    private static function read(string $file): string
    {
        $problem = $file === '-' ? null : Files::problem($file);
        $text = $problem === null ? @file_get_contents($file === '-' ? 'php://stdin' : $file) : false;
        if ($text === false) {
            throw new Failure("$file: " . ($problem ?? 'reading failed'));
        }
        return $text;
    }
}
