<?php

namespace Template;

/**
 * The engine has refused a template. The message is the engine's own. File and line are those of the template, so that an
 * error page opens it there.
 *
 * Where no file is at fault (a file that is missing, a template given as text) they are those of the code that asked for it.
 * The line is 0 when the file is known and the line isn't.
 */
final class TemplateError extends \ErrorException
{
    /**
     * $template: the name that was to be rendered; null for a text.
     * $templateLine, $templateColumn: the place in the file or the text, both from 1, in characters; null when not known.
     * $includedFrom: the include tags that lead to the file, innermost first; "file" is empty for those in a text.
     *
     * @param list<array{file: string, line: int, column: int}> $includedFrom
     */
    public function __construct(
        string $message,
        string $file,
        int $line,
        public readonly ?string $template,
        public readonly ?int $templateLine = null,
        public readonly ?int $templateColumn = null,
        public readonly array $includedFrom = [],
    ) {
        parent::__construct($message, 0, E_WARNING, $file, $line);
        // Error pages show the trace: it begins with the include tags.
        $frames = [];
        foreach ($includedFrom as $place) {
            if ($place['file'] !== '') {
                $frames[] = ['file' => $place['file'], 'line' => $place['line'], 'function' => 'include'];
            }
        }
        $trace = new \ReflectionProperty(\Exception::class, 'trace');
        $trace->setValue($this, [...$frames, ...$this->getTrace()]);
    }
}
