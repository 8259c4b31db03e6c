<?php

namespace TemplateTool\Syntax;

/**
 * Asks the engine. It reads no files: texts that come here hold no include tag that leads to one.
 */
final class Engine
{
    // Begins each text. An error message ends in " in " and the text, so this is where the message itself ends.
    private const MARK = "\x02tag\x02";

    /** What the engine says against a template text; null when it renders. */
    public function complaint(string $text, array $data = []): ?string
    {
        [$result, $messages] = $this->call(self::MARK . $text, $data, true);
        if ($result !== null || !$messages) {
            return null;
        }
        $message = end($messages);
        $end = strpos($message, ' in ' . self::MARK);
        return $end === false ? $message : substr($message, 0, $end);
    }

    /** What the engine says against an include tag that leads to a file which is being read already. */
    public function circleComplaint(Tag $include): ?string
    {
        // In string mode the template's name is its text: a value that is this text closes the circle.
        $indexes = (new Reference($include->argument, 0))->indexes;
        return $this->complaint($include->source, self::dataWith($indexes, self::MARK . $include->source));
    }

    /** What the engine says when it has to read this path. */
    public function fileComplaint(string $path): ?string
    {
        [$result, $messages] = $this->call($path, [], false);
        return $result === null && $messages ? end($messages) : null;
    }

    /** @return array{?string, list<string>} the rendered text, and what PHP reported, in order */
    public function render(string $text, array $data): array
    {
        return $this->call($text, $data, true);
    }

    /** Data in which a path leads to a value. */
    public static function dataWith(array $indexes, mixed $value): array
    {
        foreach (array_reverse($indexes) as $index) {
            $value = [$index => $value];
        }
        return $value;
    }

    /** @return array{?string, list<string>} */
    private function call(string $name, array $data, bool $stringMode): array
    {
        $messages = [];
        set_error_handler(static function (int $level, string $message) use (&$messages): bool {
            $messages[] = $message;
            return true;
        });
        try {
            $result = template($name, $data, $stringMode);
        } catch (\Throwable $error) {
            $result = null;
            $messages = [];
        } finally {
            restore_error_handler();
        }
        return [$result, $messages];
    }
}
