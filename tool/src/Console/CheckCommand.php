<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Completion\CompletionInput;
use Symfony\Component\Console\Completion\CompletionSuggestions;
use Symfony\Component\Console\Helper\ProgressBar;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;
use Symfony\Component\Console\Output\ConsoleOutputInterface;
use Symfony\Component\Console\Output\OutputInterface;
use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Report\Paint;
use TemplateTool\Report\Report;
use TemplateTool\Rules\Catalogue;

final class CheckCommand extends Command
{
    private const PATTERNS = ['*.tpl', '*.html', '*.htm'];
    private const MANY_FILES = 200;

    protected function configure(): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $patterns = implode(' ', self::PATTERNS);
        $this->setName('check')
            ->setDescription('Finds what is wrong in templates')
            ->addArgument('path', InputArgument::REQUIRED | InputArgument::IS_ARRAY, 'Files or folders, or "-" for the'
                . ' standard input')
            ->addOption('data', 'd', InputOption::VALUE_REQUIRED, 'Sample data. ' . Data::JSON_HELP)
            ->addOption('security', null, InputOption::VALUE_NONE, 'Looks also at escaping and at includes from the data')
            ->addOption('off', null, $several, 'A warning that isn\'t wanted, by its name')
            ->addOption('errors-only', 'e', InputOption::VALUE_NONE, 'Turns off all warnings')
            ->addOption('format', 'f', InputOption::VALUE_REQUIRED, implode(', ', Report::FORMATS), 'text')
            ->addOption('name', null, $several, "Which files of a folder are templates (else $patterns)")
            ->addOption('include-path', 'I', $several, 'A folder in which included files are looked for (else the'
                . ' given folders and those of the pages)');
        Data::addOptions($this);
        $this->setHelp(<<<'HELP'
            Reports every error of the templates, and what the language allows but no author wants:

              <info>template check templates/</info>

            Error messages are the engine's own. Warnings have names: <info>template explain</info> lists and explains
            them, and <info>--off NAME</info> leaves one out. Included files are looked at as well. A template that
            another one includes is checked from there, inside the loops around the include tag.

            With sample data, references that find nothing and loops over what is no array are reported too:

              <info>template check page.tpl --data sample.json</info>

            The exit status is 0 when nothing was found, 1 when something was, and 2 when a file couldn't be checked.
            HELP);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestOptionValuesFor('format')) {
            $suggestions->suggestValues(Report::FORMATS);
        } elseif ($input->mustSuggestOptionValuesFor('off')) {
            $suggestions->suggestValues(Catalogue::names());
        }
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        $format = $input->getOption('format');
        if (!in_array($format, Report::FORMATS, true)) {
            throw new Failure("--format $format: choose one of " . implode(', ', Report::FORMATS));
        }
        $paths = $input->getArgument('path');
        $checker = new Checker(new Options(
            IncludePath::of($input, $paths),
            $this->off($input),
            $input->getOption('security'),
            Data::read($input, $input->getOption('data'))
        ));
        [$findings, $files] = $paths === ['-']
            ? [$checker->checkText(self::input(), 'standard input'), 1]
            : $this->checkFiles($checker, $paths, $input->getOption('name') ?: self::PATTERNS, $output);

        foreach ($checker->unreadable() as $problem) {
            fwrite(STDERR, "template: $problem\n");
        }
        $paint = new Paint($output->isDecorated());
        $output->write(Report::make($format, $findings, $files, $paint), false, OutputInterface::OUTPUT_RAW);
        return match (true) {
            $checker->unreadable() !== [] => Start::FAILURE,
            $findings !== [] => Start::FINDINGS,
            default => Start::GOOD,
        };
    }

    private static function input(): string
    {
        $text = stream_get_contents(STDIN);
        $problem = Files::textProblem($text);
        if ($problem !== null) {
            throw new Failure("standard input: $problem");
        }
        return $text;
    }

    private function off(InputInterface $input): array
    {
        $names = Catalogue::names();
        foreach ($input->getOption('off') as $name) {
            if (!in_array($name, $names, true)) {
                throw new Failure("--off $name: there is no such warning; " . Catalogue::suggestion($name));
            }
        }
        return $input->getOption('errors-only') ? $names : $input->getOption('off');
    }

    /** @return array{list<\TemplateTool\Check\Finding>, int} the findings and the number of files */
    private function checkFiles(Checker $checker, array $paths, array $patterns, OutputInterface $output): array
    {
        $files = TemplateFiles::in($paths, $patterns);
        $bar = null;
        if (count($files) >= self::MANY_FILES && $output instanceof ConsoleOutputInterface && stream_isatty(STDERR)) {
            $bar = new ProgressBar($output->getErrorOutput(), count($files));
            $bar->setRedrawFrequency(max(1, count($files) >> 7));
            $bar->start();
        }
        $findings = $checker->checkFiles($files, static fn() => $bar?->advance());
        $bar?->clear();
        return [$findings, count($files) - count($checker->unreadable())];
    }
}
