<?php

namespace Template;

/**
 * Renders templates by the function template(), with an include path of its own; what the function has against a template
 * becomes an exception that knows the place.
 *
 *     $engine = new Engine('/srv/site/templates');
 *     echo $engine->render('film.tpl', ['film' => ['title' => 'Two Owls']]);
 *
 * The caller's include path and error handler are there again however a call ends. Warnings that aren't about the template,
 * such as those of code that the data runs, go where they would have gone without it.
 */
final class Engine
{
    /** @var list<string> absolute, without a slash at the end */
    public readonly array $folders;

    private string $includePath;

    /**
     * $folders: where templates are looked for, and what they include, in this order.
     * $development: tells what the checker finds in the files that are rendered; null in production.
     *
     * @param string|non-empty-list<string> $folders
     * @throws \InvalidArgumentException when one of them is no folder, or can't be part of an include path
     */
    public function __construct(string|array $folders, private ?Development $development = null)
    {
        $this->folders = array_map(self::absolute(...), array_values((array) $folders));
        $this->includePath = implode(PATH_SEPARATOR, $this->folders)
            ?: throw new \InvalidArgumentException('A template engine needs at least one folder');
        Call::guard();
    }

    /**
     * The page that a template file makes of the data. $name: as an include tag would name it, or an absolute path.
     *
     * @throws TemplateError when the function refuses
     * @throws \Throwable whatever code throws that the data runs
     */
    public function render(string $name, array $data = []): string
    {
        $page = $this->call($name, $data, false);
        $this->development?->look($name, $this->folders);
        return $page;
    }

    /**
     * The same for a template that is given as text.
     *
     * @throws TemplateError when the function refuses
     * @throws \Throwable whatever code throws that the data runs
     */
    public function renderText(string $text, array $data = []): string
    {
        return $this->call($text, $data, true);
    }

    /** The name of a file relative to the folder it lies in; its path when that name would find another file. */
    public function nameOf(string $path): string
    {
        foreach ($this->folders as $folder) {
            $name = substr($path, strlen($folder) + 1);
            if (str_starts_with($path, "$folder/")) {
                return $this->pathOf($name) === $path ? $name : $path;
            }
        }
        return $path;
    }

    private function pathOf(string $name): ?string
    {
        foreach ($this->folders as $folder) {
            if (is_file("$folder/$name")) {
                return "$folder/$name";
            }
        }
        return null;
    }

    private function call(string $source, array $data, bool $isText): string
    {
        $call = new Call($this->includePath);
        try {
            $page = \template($source, $data, $isText);
        } finally {
            $call->end();
        }
        if ($page === null) {
            throw (new Locator($this->folders))->error($call->message(), $source, $data, $isText);
        }
        $call->passOn();
        return $page;
    }

    private static function absolute(string $folder): string
    {
        $path = str_starts_with($folder, '/') || str_contains($folder, '://') ? $folder : getcwd() . "/$folder";
        if ($folder === '' || !is_dir($path)) {
            throw new \InvalidArgumentException("There is no folder \"$folder\"");
        }
        if (str_contains($path, PATH_SEPARATOR)) {
            throw new \InvalidArgumentException("A folder for templates can't have \"" . PATH_SEPARATOR . "\" in its name: $path");
        }
        return preg_replace('~(?<=.)(?:/\.?)+$~', '', $path);
    }
}
