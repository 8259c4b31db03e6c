<?php

namespace TemplateTool\Console;

use TemplateTool\Check\Checker;
use TemplateTool\Check\Finding;
use TemplateTool\Check\Options;
use TemplateTool\Files\Files;
use TemplateTool\Report\Paint;
use TemplateTool\Report\Text;

/** Renders one page, and tells where its errors are. */
final class Renderer
{
    private Files $files;
    private float $seconds = 0;
    private int $memory = 0;
    private int $bytes = 0;

    /**
     * $page: a template file, or null when $text is the template.
     *
     * @param list<string> $includePath
     */
    public function __construct(
        private ?string $page,
        private ?string $text,
        private array $includePath,
        private bool $isDecorated,
    ) {
        $this->files = new Files($includePath);
    }

    /** The rendered page. Null after an error, which has been reported. */
    public function render(array $data): ?string
    {
        set_include_path(implode(PATH_SEPARATOR, $this->files->folders($this->page ?? '')));
        $messages = [];
        set_error_handler(static function (int $level, string $message) use (&$messages): bool {
            $messages[] = $message;
            return true;
        });
        memory_reset_peak_usage();
        $memory = memory_get_usage();
        $start = hrtime(true);
        try {
            $page = template($this->name(), $data, $this->page === null);
        } finally {
            restore_error_handler();
        }
        $this->seconds = (hrtime(true) - $start) / 1e9;
        $this->memory = memory_get_peak_usage() - $memory;
        $this->bytes = strlen($page ?? '');
        $this->report($messages, $page === null, $data);
        return $page;
    }

    public function stats(array $data): string
    {
        $sources = $this->check($data)->sources();
        $read = array_sum(array_map(static fn($source): int => strlen($source->text), $sources));
        return sprintf("time    %.3f ms\n", $this->seconds * 1e3)
            . sprintf("memory  %.1f kB\n", $this->memory / 1e3)
            . sprintf("page    %.1f kB\n", $this->bytes / 1e3)
            . sprintf("read    %.1f kB in %d file%s\n", $read / 1e3, count($sources), count($sources) === 1 ? '' : 's');
    }

    /** @return list<string> the files that take part, and the places where missing ones were looked for */
    public function watched(array $data): array
    {
        return array_filter([$this->page, ...$this->check($data)->looked()], static fn($path): bool => $path !== null);
    }

    /** The name under which the engine gets the template: as an include tag would name it, or with its whole path. */
    private function name(): string
    {
        if ($this->page === null) {
            return $this->text;
        }
        $path = realpath($this->page);
        foreach ($this->files->namesOf($path) as $name) {
            // Another file of this name may come earlier in the include path.
            if (stream_resolve_include_path($name) === $path) {
                return $name;
            }
        }
        return $path;
    }

    /** Prints what the engine, or PHP on its behalf, has said, each with its place if that is known. */
    private function report(array $messages, bool $hasFailed, array $data): void
    {
        if (!$messages) {
            return;
        }
        $this->check($data, $findings);
        $printer = new Text(new Paint($this->isDecorated && stream_isatty(STDERR)));
        $error = $hasFailed ? array_pop($messages) : null;
        $arrays = array_filter($findings, static fn(Finding $finding): bool => $finding->name === 'array-as-text');
        foreach ($arrays as $finding) {
            fwrite(STDERR, $printer->one($finding));
        }
        foreach (array_unique($messages) as $message) {
            if (!$arrays || $message !== 'Array to string conversion') {
                fwrite(STDERR, "template: warning: $message\n");
            }
        }
        if ($error !== null) {
            $finding = $this->place($error, $findings);
            $name = $this->page ?? 'template';
            fwrite(STDERR, $finding ? $printer->one($finding) : "$name: error: " . Text::visible($error) . "\n");
        }
    }

    /** The finding that is about this error message. */
    private function place(string $error, array $findings): ?Finding
    {
        $matching = array_values(array_filter($findings, static fn(Finding $finding): bool => $finding->isError()
            && str_starts_with("$error in ", "$finding->message in ")));
        foreach ($matching as $finding) {
            // The message ends in the name of the file.
            $name = substr($error, strlen($finding->message) + strlen(' in '));
            if ($name !== '' && str_ends_with($finding->source->path, ltrim($name, './'))) {
                return $finding;
            }
        }
        return $matching[0] ?? null;
    }

    private function check(array $data, ?array &$findings = null): Checker
    {
        $checker = new Checker(new Options($this->includePath, data: $data));
        $findings = $this->page === null
            ? $checker->checkText($this->text)
            : $checker->checkFiles([$this->page]);
        return $checker;
    }
}
