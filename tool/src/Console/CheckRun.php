<?php

namespace TemplateTool\Console;

use Symfony\Component\Console\Input\InputInterface;
use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Findings;
use TemplateTool\Check\Options;
use TemplateTool\Files\TemplateFiles;
use TemplateTool\Json\JsonText;
use TemplateTool\Json\Schema;
use TemplateTool\Json\SchemaSample;
use TemplateTool\Project\Baseline;
use TemplateTool\Project\Project;
use TemplateTool\Project\ProjectCheck;
use TemplateTool\Rules\Catalogue;
use TemplateTool\Syntax\Source;

/** One run of "template check" over files: each is checked as its project file says, if there is one. */
final class CheckRun
{
    /** @var list<array{?Project, list<string>}> projects, and what is to be checked of each; nothing stands for all */
    private array $groups = [];

    /** How many files were to be checked. */
    public int $files = 0;

    /** How many findings the baselines know that aren't there any more. */
    public int $gone = 0;

    /** @var array<string, Source> by path: what has been read */
    private array $sources = [];

    /** @var list<string> other files and folders that this run depends on */
    private array $watched = [];

    /** @param list<string> $paths files and folders; none for the project around the current folder */
    public function __construct(private InputInterface $input, array $paths)
    {
        $groups = [];
        foreach ($paths ?: [null] as $path) {
            $folder = $path === null ? '.' : (is_dir($path) ? $path : dirname($path));
            $groups[$this->projectFile($folder) ?? ''][] = $path;
        }
        if (!$paths && isset($groups[''])) {
            throw new Failure('check: give files or folders; without any, the project is checked, but there is no '
                . Project::FILE . ' in this folder or above it');
        }
        foreach ($groups as $file => $ofGroup) {
            $project = $file === '' ? null : Project::load($file);
            $this->groups[] = [$project, array_filter($ofGroup, is_string(...))];
            $this->watched[] = $project?->file;
        }
    }

    /**
     * $onFile is called for each page; it is given how many files there are.
     *
     * @return list<Finding>
     */
    public function findings(callable $onFile): array
    {
        $findings = [];
        foreach ($this->groups as [$project, $paths]) {
            $files = $project && !$paths
                ? $project->files()
                : TemplateFiles::in($paths, $this->input->getOption('name') ?: $project->names ?? Project::NAMES);
            $this->files += count($files);
            $findingsOfGroup = new Findings(new Options());
            foreach (self::data($this->input) as [$data, $note]) {
                $options = $this->options($project, $paths, $data);
                $checker = $project ? new ProjectCheck($project, $options, getcwd()) : new Checker($options);
                $found = $project
                    ? $checker->check($paths ? $files : [], fn() => $onFile($this->files))
                    : $checker->checkFiles($files, fn() => $onFile($this->files));
                $findingsOfGroup->addAll($found, $note);
                $this->sources += $checker->sources();
                array_push($this->watched, ...$checker->looked());
            }
            $folders = array_merge(array_map(dirname(...), $files), array_filter([...$paths, ...$project->pages ?? []], is_dir(...)));
            array_push($this->watched, ...$files, ...array_unique($folders));
            array_push($findings, ...$this->unknown($findingsOfGroup->sorted(), $project));
        }
        return $findings;
    }

    /** @return list<string> the files and folders on which the outcome depends */
    public function watched(): array
    {
        $data = array_map($this->input->getOption(...), ['data', 'data-php', 'schema']);
        foreach ($this->groups as [$project]) {
            array_push($data, ...array_values($project->data ?? []), ...array_filter([$this->baselineFile($project)]));
        }
        return array_values(array_unique(array_filter([...$this->watched, ...array_keys($this->sources), ...$data])));
    }

    private function projectFile(string $folder): ?string
    {
        $file = $this->input->getOption('project');
        if ($file !== null && $this->input->getOption('no-project')) {
            throw new Failure('check: --project or --no-project, not both');
        }
        return $this->input->getOption('no-project') ? null : $file ?? Project::findFile($folder);
    }

    /**
     * The data to check with, each with a note for what is found: as it is given, or two that fit a schema.
     *
     * @return list<array{?array, ?string}>
     */
    public static function data(InputInterface $input): array
    {
        $data = Data::read($input, $input->getOption('data'));
        $file = $input->getOption('schema');
        if ($file === null) {
            return [[$data, null]];
        }
        $schema = JsonText::decode(Data::contents($file), $file);
        if (!is_array($schema)) {
            throw new Failure("$file: a JSON Schema is an object, not " . get_debug_type($schema));
        }
        $problem = $data === null ? null : (new Schema($schema))->problem($data);
        if ($problem !== null) {
            $place = implode('::', $problem[0]);
            throw new Failure('the data doesn\'t fit ' . $file . ': ' . ($place === '' ? '' : "$place: ") . $problem[1]);
        }
        $sample = new SchemaSample($schema);
        return [
            [(array) $sample->full(), "checked with data that has all of $file"],
            [(array) $sample->least(), "checked with data that has no more than $file requires"],
        ];
    }

    /** @return list<string> the warnings that the command line turns off */
    public static function off(InputInterface $input, ?Project $project): array
    {
        $names = Catalogue::names();
        foreach ($input->getOption('off') as $name) {
            if (!in_array($name, $names, true)) {
                throw new Failure("--off $name: there is no such warning; " . Catalogue::suggestion($name));
            }
        }
        return $input->getOption('errors-only')
            ? array_values(array_diff($names, $project?->errors() ?? []))
            : $input->getOption('off');
    }

    private function options(?Project $project, array $paths, ?array $data): Options
    {
        $off = self::off($this->input, $project);
        $includePath = $project && !$this->input->getOption('include-path') ? [] : IncludePath::of($this->input, $paths);
        return new Options($includePath, $off, $this->input->getOption('security'), $data);
    }

    /** @param list<Finding> $findings @return list<Finding> those that no baseline knows */
    private function unknown(array $findings, ?Project $project): array
    {
        $file = $this->baselineFile($project);
        if ($file === null) {
            return $findings;
        }
        $baseline = new Baseline($file);
        $baseline->load();
        if ($this->input->getOption('write-baseline')) {
            $count = $baseline->write($findings, array_keys($this->sources));
            fwrite(STDERR, "template: $file: " . ($count === 1 ? '1 finding is' : "$count findings are") . " known now\n");
        }
        $findings = $baseline->unknown($findings);
        $this->gone += $baseline->gone(array_keys($this->sources));
        return $findings;
    }

    private function baselineFile(?Project $project): ?string
    {
        return $this->input->getOption('baseline')
            ?? $project?->baseline
            ?? ($this->input->getOption('write-baseline') ? Project::BASELINE : null);
    }
}
