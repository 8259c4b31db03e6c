<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Files\Given;
use TemplateTool\Files\Unreadable;
use TemplateTool\Report\Paint;
use TemplateTool\Report\Report;
use TemplateTool\Report\TreeText;

final class TreeCommand extends Command
{
    protected function configure(): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $this->setName('tree')
            ->setDescription('Shows the structure of a template')
            ->addArgument('page', InputArgument::REQUIRED, 'The template')
            ->addArgument('data', InputArgument::OPTIONAL, 'Sample data. ' . Data::JSON_HELP)
            ->addOption('format', 'f', InputOption::VALUE_REQUIRED, 'text, json', 'text')
            ->addOption('include-path', 'I', $several, 'A folder in which included files are looked for (else that of'
                . ' the page)');
        Data::addOptions($this);
        $this->setHelp(<<<'HELP'
            Shows the tags of a template and of the files that it includes, how they are nested, and what their
            references mean. With sample data it also says what that settles: which sections are shown, how often loops run, what
            tags print. What depends on the element of a loop is open.

              <info>template tree page.tpl data.json</info>

            The exit status is 1 when the template has errors; <info>template check</info> tells about them.
            HELP);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestOptionValuesFor('format')) {
            $suggestions->suggestValues(['text', 'json']);
        }
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $page = $input->getArgument('page');
        $name = Given::name($page);
        $format = $input->getOption('format');
        if ($format !== 'text' && $format !== 'json') {
            throw new Failure("--format $format: choose one of text, json");
        }
        $checker = new Checker(new Options(
            IncludePath::of($input, []),
            data: Data::read($input, $input->getArgument('data'))
        ));
        try {
            $tree = $checker->treeOfFile($page);
        } catch (Unreadable $problem) {
            throw new Failure($problem->getMessage());
        }
        $text = $format === 'json'
            ? Report::json($tree) . "\n"
            : (new TreeText(new Paint($output->isDecorated())))->make($name, $tree);
        $output->write($text, false, OutputInterface::OUTPUT_RAW);

        $errors = array_filter($checker->checkFiles([$page]), static fn($finding): bool => $finding->isError());
        if ($errors) {
            $count = count($errors) === 1 ? 'an error' : count($errors) . ' errors';
            fwrite(STDERR, "template: $name has $count; \"template check $page\" tells more\n");
        }
        return $errors ? Start::FINDINGS : Start::GOOD;
    }
}
