<?php

namespace TemplateTool\Server;

use TemplateTool\Check\Checker;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Files\TemplateFiles;
use TemplateTool\Json\Broken;
use TemplateTool\Project\Project;

/** One project: the templates below a folder, and how its project file means them. */
final class Folder
{
    public readonly Includes $includes;
    private ?Project $project = null;
    private bool $isLoaded = false;

    /** @var array<string, string> what is wrong with the project file and the sample data, each once */
    private array $problems = [];

    /** @var array<string, Options> by page */
    private array $options = [];

    public function __construct(public readonly string $path, private Workspace $workspace)
    {
        $this->includes = new Includes($this, $workspace);
    }

    /** The project file, sample data or other templates may have changed. */
    public function forget(): void
    {
        $this->isLoaded = false;
        $this->options = [];
        $this->includes->forget();
    }

    /** Null when there is no project file. While it is broken, it counts as it was before. */
    public function project(): ?Project
    {
        if (!$this->isLoaded) {
            $this->isLoaded = true;
            $this->problems = [];
            try {
                $file = $this->projectFile();
                $this->project = is_file($file) ? Project::load($file, $this->workspace->texts()) : null;
            } catch (Broken $problem) {
                $this->problems[$problem->getMessage()] = $problem->getMessage();
            }
        }
        return $this->project;
    }

    public function projectFile(): string
    {
        return rtrim($this->path, '/') . '/' . Project::FILE;
    }

    /** Whether a file says what templates mean: the project file, or sample data. */
    public function isSettings(string $path): bool
    {
        return basename($path) === Project::FILE || in_array($path, $this->project()?->data ?? [], true);
    }

    /** @return list<string> what is wrong with the project file and with sample data, beginning with file and place */
    public function problems(): array
    {
        $this->project();
        return array_values($this->problems);
    }

    /** What a check of a page looks for. */
    public function options(string $page): Options
    {
        return $this->options[$page] ??= $this->makeOptions($page);
    }

    /** The sample data of a page; null when there is none. */
    public function data(string $page): ?array
    {
        return $this->options($page)->data;
    }

    public function files(string $page): Files
    {
        return new Files($this->options($page)->includePath, $this->workspace->texts());
    }

    public function checker(string $page): Checker
    {
        return new Checker($this->options($page), $this->workspace->documents, $this->workspace->texts());
    }

    /** @return list<string> the paths of all templates */
    public function templates(): array
    {
        return TemplateFiles::below($this->project()?->pages ?? [$this->path], $this->patterns());
    }

    /** Whether a file of this name is a template. */
    public function isTemplate(string $name): bool
    {
        return array_filter($this->patterns(), static fn(string $pattern): bool => fnmatch($pattern, $name)) !== [];
    }

    /** @return list<string> */
    public function patterns(): array
    {
        return $this->project()?->names ?? Project::NAMES;
    }

    private function makeOptions(string $page): Options
    {
        $project = $this->project();
        if (!$project) {
            // The folder in which an editor has started this server says nothing.
            $rest = array_diff(explode(PATH_SEPARATOR, get_include_path()), ['.']);
            return new Options([$this->path, '', ...$rest]);
        }
        try {
            return $project->options($page);
        } catch (Broken $problem) {
            $this->problems[$problem->getMessage()] = $problem->getMessage();
            return $project->options();
        }
    }
}
