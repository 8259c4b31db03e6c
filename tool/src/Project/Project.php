<?php

namespace TemplateTool\Project;

use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Files\TemplateFiles;
use TemplateTool\Json\Broken;
use TemplateTool\Json\JsonText;
use TemplateTool\Json\Places;
use TemplateTool\Json\Schema;
use TemplateTool\Rules\Catalogue;
use TemplateTool\Rules\Warning;
use TemplateTool\Syntax\Source;

/**
 * A project file, "template.json": which templates belong together, and how they are checked.
 *
 *     $file = Project::findFile('templates/page.tpl');
 *     $project = $file === null ? null : Project::load($file);
 *
 * All paths are absolute. The file names sample data only as JSON: to open a folder must not run its code.
 */
final class Project
{
    public const FILE = 'template.json';
    public const BASELINE = 'template-baseline.json';
    public const NAMES = ['*.tpl', '*.html', '*.htm'];

    public readonly string $folder;

    /** @var list<string> folders with pages, and single pages */
    public readonly array $pages;

    /** @var list<string> patterns for the names of templates */
    public readonly array $names;

    /** @var list<string> as in Options */
    public readonly array $includePath;

    /** @var array<string, string> sample data: patterns for the paths of pages, from the folder; JSON files */
    public readonly array $data;

    /** @var array<string, string> "off", "warning" or "error" by the name of a warning */
    public readonly array $warnings;

    public readonly bool $security;

    /** @var list<string> references, as templates write them, to values that need no escaping */
    public readonly array $vouched;

    /** The file with the findings that are known; it need not exist. */
    public readonly string $baseline;

    /** @var array<string, array> by file */
    private array $read = [];

    /** @param array<string, string> $texts as in parse() */
    private function __construct(public readonly string $file, array $settings, private array $texts)
    {
        $this->folder = dirname($file);
        $this->pages = array_map($this->path(...), $settings['pages'] ?? ['.']);
        $this->names = $settings['names'] ?? self::NAMES;
        $this->includePath = isset($settings['includePath'])
            ? array_map($this->path(...), $settings['includePath'])
            : [...array_filter($this->pages, is_dir(...)), ''];
        $this->data = array_map($this->path(...), $settings['data'] ?? []);
        $this->warnings = $settings['warnings'] ?? [];
        $this->security = $settings['security'] ?? false;
        $this->vouched = $settings['vouched'] ?? [];
        $this->baseline = $this->path($settings['baseline'] ?? self::BASELINE);
    }

    /** The project file that a file or folder belongs to, with its absolute path; null when there is none. */
    public static function findFile(string $from): ?string
    {
        $folder = realpath($from);
        while ($folder !== false) {
            $file = rtrim($folder, '/') . '/' . self::FILE;
            if (is_file($file)) {
                return $file;
            }
            $folder = $folder === '/' ? false : dirname($folder);
        }
        return null;
    }

    /**
     * @param array<string, string> $texts as in parse()
     * @throws Broken naming the place
     */
    public static function load(string $file, array $texts = []): self
    {
        $problem = Files::problem($file);
        $text = $texts[$file] ?? ($problem === null ? @file_get_contents($file) : false);
        if ($text === false) {
            throw new Broken("$file: " . ($problem ?? 'reading failed'));
        }
        return self::parse($text, $file, $texts);
    }

    /**
     * @param string $text of a project file
     * @param array<string, string> $texts those that count in place of what is in the files, by path
     * @throws Broken naming the place
     */
    public static function parse(string $text, string $file, array $texts = []): self
    {
        $source = new Source($file, $text);
        $settings = JsonText::decode($text, $file);
        $problem = (new Schema(self::schema()))->problem($settings);
        if ($problem !== null) {
            throw Broken::at($source, (new Places($text))->of($problem[0]), $problem[1]);
        }
        $project = new self((realpath(dirname($file)) ?: dirname($file)) . '/' . basename($file), $settings, $texts);
        foreach (['pages', 'includePath', 'data'] as $key) {
            foreach ($settings[$key] ?? [] as $i => $path) {
                $absolute = $project->path($path);
                $isThere = $key === 'includePath' ? is_dir($absolute) : file_exists($absolute);
                if (!$isThere) {
                    $what = ['pages' => 'file or folder', 'includePath' => 'folder', 'data' => 'file'][$key];
                    throw Broken::at($source, (new Places($text))->of([$key, $i]), "$key: there is no $what \"$path\"");
                }
            }
        }
        return $project;
    }

    /** The JSON Schema of project files, with the names of all warnings. */
    public static function schema(): array
    {
        $schema = json_decode(file_get_contents(dirname(__DIR__, 2) . '/template.schema.json'), true);
        $schema['properties']['warnings']['properties'] = array_map(static fn(Warning $warning): array => [
            'description' => $warning->summary,
            'enum' => ['off', 'warning', 'error'],
        ], Catalogue::all());
        return $schema;
    }

    /** @return list<string> names of warnings */
    public function off(): array
    {
        return array_keys($this->warnings, 'off', true);
    }

    /** @return list<string> names of warnings that count as errors */
    public function errors(): array
    {
        return array_keys($this->warnings, 'error', true);
    }

    /** The JSON file with the sample data of a page; null when the project has none. */
    public function dataFile(string $page): ?string
    {
        $path = $this->relative($page);
        foreach ($this->data as $pattern => $file) {
            if ((string) $pattern === $path || fnmatch((string) $pattern, $path)) {
                return $file;
            }
        }
        return null;
    }

    /**
     * The sample data of a page; null when the project has none.
     *
     * @throws Broken
     */
    public function dataOf(string $page): ?array
    {
        $file = $this->dataFile($page);
        if ($file === null) {
            return null;
        }
        if (!isset($this->read[$file])) {
            $text = $this->texts[$file] ?? @file_get_contents($file);
            $data = $text === false ? throw new Broken("$file: reading failed") : JsonText::decode($text, $file);
            if (!is_array($data)) {
                throw new Broken("$file: the data must be an object or an array, not " . get_debug_type($data));
            }
            $this->read[$file] = $data;
        }
        return $this->read[$file];
    }

    /** How templates are checked. $page: whose sample data counts. @throws Broken when that can't be read */
    public function options(?string $page = null): Options
    {
        return new Options(
            $this->includePath,
            $this->off(),
            $this->security,
            $page === null ? null : $this->dataOf($page),
            $this->errors(),
            $this->vouched
        );
    }

    /** @return list<string> all templates of the project, with folders that can't be read */
    public function files(): array
    {
        return TemplateFiles::below($this->pages, $this->names);
    }

    /** A path as the project file would write it. */
    public function relative(string $path): string
    {
        $path = realpath($path) ?: $path;
        return str_starts_with($path, "$this->folder/") ? substr($path, strlen($this->folder) + 1) : $path;
    }

    private function path(string $path): string
    {
        $path = str_starts_with($path, '/') ? $path : ($path === '.' ? $this->folder : "$this->folder/$path");
        return realpath($path) ?: $path;
    }
}
