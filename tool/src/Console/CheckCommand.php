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
use TemplateTool\Check\Finding;
use TemplateTool\Check\Findings;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Fix\Change;
use TemplateTool\Fix\Diff;
use TemplateTool\Fix\Fixer;
use TemplateTool\Project\Project;
use TemplateTool\Report\Paint;
use TemplateTool\Report\Report;
use TemplateTool\Rules\Catalogue;

final class CheckCommand extends Command
{
    private const MANY_FILES = 200;
    private const FAIL_ON = [Finding::ERROR, Finding::WARNING];

    protected function configure(): void
    {
        $several = InputOption::VALUE_REQUIRED | InputOption::VALUE_IS_ARRAY;
        $patterns = implode(' ', Project::NAMES);
        $this->setName('check')
            ->setDescription('Finds what is wrong in templates')
            ->addArgument('path', InputArgument::IS_ARRAY, 'Files or folders, or "-" for the standard'
                . ' input; without any, the project')
            ->addOption('data', 'd', InputOption::VALUE_REQUIRED, 'Sample data. ' . Data::JSON_HELP)
            ->addOption('schema', null, InputOption::VALUE_REQUIRED, 'A JSON Schema of the data, in place of sample data')
            ->addOption('security', null, InputOption::VALUE_NONE, 'Looks also at escaping and at includes from the data')
            ->addOption('off', null, $several, 'A warning that isn\'t wanted, by its name')
            ->addOption('errors-only', 'e', InputOption::VALUE_NONE, 'Turns off all warnings')
            ->addOption('format', 'f', InputOption::VALUE_REQUIRED, implode(', ', Report::FORMATS), 'text')
            ->addOption('fail-on', null, InputOption::VALUE_REQUIRED, 'What makes the exit status 1: error, warning', 'warning')
            ->addOption('project', 'p', InputOption::VALUE_REQUIRED, 'A project file (else ' . Project::FILE . ', found'
                . ' upwards from the templates)')
            ->addOption('no-project', null, InputOption::VALUE_NONE, 'Looks for no project file')
            ->addOption('baseline', null, InputOption::VALUE_REQUIRED, 'A file with findings that are known and left out'
                . ' (else the project\'s)')
            ->addOption('write-baseline', null, InputOption::VALUE_NONE, 'Makes today\'s findings the known ones')
            ->addOption('fix', null, InputOption::VALUE_NONE, 'Mends what has one right answer')
            ->addOption('dry-run', null, InputOption::VALUE_NONE, 'With --fix: writes nothing, shows what would change')
            ->addOption('watch', 'w', InputOption::VALUE_NONE, 'Checks again whenever a file that takes part changes')
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

            A JSON Schema, as <info>template needs --schema</info> makes it, does as well: the templates may use what it
            has, and what it doesn't require only where that may be missing:

              <info>template check page.tpl --schema page.schema.json</info>

            A project file, <info>template.json</info>, says how the templates in and below its folder are checked. With
            it a command without paths checks the whole project:

              <info>template check</info>

            Findings that are there already can be made known; from then on only new ones are reported:

              <info>template check --write-baseline</info>

            The exit status is 0 when nothing was found, 1 when something was, and 2 when a file couldn't be checked. With
            <info>--fail-on error</info> it is 0 when there were only warnings.
            HELP);
    }

    public function complete(CompletionInput $input, CompletionSuggestions $suggestions): void
    {
        if ($input->mustSuggestOptionValuesFor('format')) {
            $suggestions->suggestValues(Report::FORMATS);
        } elseif ($input->mustSuggestOptionValuesFor('off')) {
            $suggestions->suggestValues(Catalogue::names());
        } elseif ($input->mustSuggestOptionValuesFor('fail-on')) {
            $suggestions->suggestValues(self::FAIL_ON);
        }
    }

    protected function execute(InputInterface $input, OutputInterface $output): int
    {
        foreach (['format' => Report::FORMATS, 'fail-on' => self::FAIL_ON] as $option => $allowed) {
            $value = $input->getOption($option);
            if (!in_array($value, $allowed, true)) {
                throw new Failure("--$option $value: choose one of " . implode(', ', $allowed));
            }
        }
        $paths = $input->getArgument('path');
        if ($input->getOption('dry-run') && !$input->getOption('fix')) {
            throw new Failure('check: --dry-run goes with --fix');
        }
        if ($paths === ['-']) {
            return $this->input($input, $output);
        }
        if ($input->getOption('watch')) {
            $this->watch($input, $output, $paths);
        }
        return $this->files($input, $output, new CheckRun($input, $paths));
    }

    private function input(InputInterface $input, OutputInterface $output): int
    {
        foreach (['fix', 'watch', 'write-baseline'] as $option) {
            if ($input->getOption($option)) {
                throw new Failure("check: --$option needs files; the standard input is none");
            }
        }
        $text = stream_get_contents(STDIN);
        $problem = Files::textProblem($text);
        $findings = new Findings(new Options());
        foreach (CheckRun::data($input) as [$data, $note]) {
            $off = CheckRun::off($input, null);
            $options = new Options(IncludePath::of($input, []), $off, $input->getOption('security'), $data);
            $findings->addAll($problem === null
                ? (new Checker($options))->checkText($text, 'standard input')
                : [Finding::unreadable('standard input', $problem)], $note);
        }
        return $this->report($input, $output, $findings->sorted(), 1);
    }

    private function files(InputInterface $input, OutputInterface $output, CheckRun $run): int
    {
        $findings = $this->findings($output, $run);
        if ($input->getOption('fix')) {
            $changes = (new Fixer())->changes($findings);
            if ($input->getOption('dry-run')) {
                $diff = implode('', array_map(Diff::of(...), $changes));
                $output->write($diff, false, OutputInterface::OUTPUT_RAW);
                return $changes ? Start::FINDINGS : Start::GOOD;
            }
            if ($changes) {
                $this->write($changes);
                return $this->files($input, $output, new CheckRun($input, $input->getArgument('path')));
            }
        }
        if ($run->gone > 0) {
            $gone = $run->gone === 1 ? '1 finding of the baseline is' : "$run->gone findings of the baseline are";
            fwrite(STDERR, "template: $gone gone; --write-baseline forgets what is gone\n");
        }
        return $this->report($input, $output, $findings, $run->files);
    }

    /** @return list<Finding> */
    private function findings(OutputInterface $output, CheckRun $run): array
    {
        $bar = null;
        $findings = $run->findings(static function (int $files) use ($output, &$bar): void {
            $isWanted = $files >= self::MANY_FILES && $output instanceof ConsoleOutputInterface && stream_isatty(STDERR);
            if ($bar === null && $isWanted) {
                $bar = new ProgressBar($output->getErrorOutput(), $files);
                $bar->setRedrawFrequency(max(1, $files >> 7));
                $bar->start();
            }
            $bar?->advance();
        });
        $bar?->clear();
        return $findings;
    }

    /** @param list<Change> $changes */
    private function write(array $changes): void
    {
        $places = 0;
        foreach ($changes as $change) {
            if (!$change->write()) {
                throw new Failure("{$change->source->name}: writing failed");
            }
            $places += count($change->edits);
        }
        fwrite(STDERR, 'template: mended ' . ($places === 1 ? '1 place' : "$places places") . ' in '
            . (count($changes) === 1 ? '1 file' : count($changes) . ' files') . "\n");
    }

    /** @param list<Finding> $findings */
    private function report(InputInterface $input, OutputInterface $output, array $findings, int $files): int
    {
        $unreadable = count(array_filter($findings, static fn(Finding $finding): bool => $finding->isUnreadable()));
        $text = Report::make($input->getOption('format'), $findings, $files - $unreadable, new Paint($output->isDecorated()));
        $output->write($text, false, OutputInterface::OUTPUT_RAW);
        $failing = array_filter($findings, static fn(Finding $finding): bool => $finding->isError()
            || $input->getOption('fail-on') === Finding::WARNING);
        return match (true) {
            $unreadable > 0 => Start::FAILURE,
            $failing !== [] => Start::FINDINGS,
            default => Start::GOOD,
        };
    }

    private function watch(InputInterface $input, OutputInterface $output, array $paths): never
    {
        $watched = array_filter($paths, file_exists(...));
        Watch::forever($watched, function () use ($input, $output, $paths, &$watched): array {
            try {
                $run = new CheckRun($input, $paths);
                $this->files($input, $output, $run);
                $watched = $run->watched();
            } catch (\RuntimeException $failure) {
                // What was watched before goes on being watched: the next change may mend it.
                fwrite(STDERR, 'template: ' . $failure->getMessage() . "\n");
            }
            $count = count(array_filter($watched, is_file(...)));
            fwrite(STDERR, sprintf("%s checked; watching %d files, Ctrl-C ends\n", date('H:i:s'), $count));
            return $watched;
        });
    }
}
