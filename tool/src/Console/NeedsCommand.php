<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Needs\Collector;
use TemplateTool\Needs\JsonSchema;
use TemplateTool\Needs\Need;
use TemplateTool\Needs\Outline;
use TemplateTool\Needs\PhpDoc;
use TemplateTool\Needs\Sample;
use TemplateTool\Project\Project;
use TemplateTool\Report\Report;

final class NeedsCommand extends Command
{
    protected function configure(): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $this->setName('needs')
            ->setDescription('Tells what data a page needs')
            ->addArgument('page', InputArgument::REQUIRED, 'The template')
            ->addOption('schema', null, InputOption::VALUE_NONE, 'As a JSON Schema')
            ->addOption('phpdoc', null, InputOption::VALUE_NONE, 'As a PHPDoc array shape')
            ->addOption('sample', null, InputOption::VALUE_NONE, 'As sample data to start from')
            ->addOption('data', 'd', InputOption::VALUE_REQUIRED, 'Sample data, for the names of included files that come'
                . ' from it. ' . Data::JSON_HELP)
            ->addOption('include-path', 'I', $several, 'A folder in which included files are looked for (else that of'
                . ' the project file, or of the page)');
        Data::addOptions($this);
        $this->setHelp(<<<'HELP'
            Tells what a page, with all that it includes, wants from its data: which paths, and whether they are texts
            (strings, where only those are printed), flags, lists, maps or file names, and which may be missing.

              <info>template needs page.tpl</info>
              <info>template needs page.tpl --schema > page.schema.json</info>
              <info>template needs page.tpl --phpdoc</info>
              <info>template needs page.tpl --sample > sample.json</info>

            Data that fits the schema makes the page without a missing value. <info>template check --schema</info> holds
            a template against such a file.

            The exit status is 1 when the template has errors, and 2 for wrong usage or files that can't be read.
            HELP);
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $forms = array_keys(array_filter([
            'schema' => $input->getOption('schema'),
            'phpdoc' => $input->getOption('phpdoc'),
            'sample' => $input->getOption('sample'),
        ]));
        if (count($forms) > 1) {
            throw new Failure("needs: --$forms[0] or --$forms[1], not both");
        }
        $page = $input->getArgument('page');
        $file = Project::findFile(dirname($page));
        $project = $file === null ? null : Project::load($file);
        $includePath = $project && !$input->getOption('include-path') ? $project->includePath : IncludePath::of($input, []);
        $data = Data::read($input, $input->getOption('data')) ?? $project?->dataOf($page);

        $errors = array_filter(
            (new Checker(new Options($includePath, data: $data)))->checkFiles([$page]),
            static fn($finding): bool => $finding->isError()
        );
        if ($errors) {
            $finding = reset($errors);
            $problem = $finding->isUnreadable() ? $finding->message : "it has an error; \"template check $page\" tells more";
            fwrite(STDERR, "template: $page: $problem\n");
            return $finding->isUnreadable() ? Start::FAILURE : Start::FINDINGS;
        }
        $top = (new Collector(new Files($includePath), data: $data))->collect($page);
        $output->write(self::form($forms[0] ?? 'text', $top, basename($page)), false, OutputInterface::OUTPUT_RAW);
        return Start::GOOD;
    }

    private static function form(string $form, Need $top, string $page): string
    {
        return match ($form) {
            'text' => Outline::make($top),
            'schema' => Report::json(JsonSchema::make($top, $page)) . "\n",
            'phpdoc' => PhpDoc::make($top, $page),
            'sample' => Report::json((object) Sample::make($top)) . "\n",
        };
    }
}
