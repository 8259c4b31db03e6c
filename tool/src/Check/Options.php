<?php

namespace TemplateTool\Check;

/** What a check looks for, and where. */
final class Options
{
    /**
     * $includePath: the folders in which included files are looked for, in this order. An empty one stands for the
     * folder of the page, the template that nothing includes.
     * $off: the names of warnings that aren't wanted.
     * $security: whether the warnings about escaping and includes from data are wanted.
     * $data: what the templates are meant for; null when nothing is known of it.
     * $errors: the names of warnings that count as errors.
     * $vouched: references, as templates write them, to values that need no escaping.
     * $memory: how many bytes of memory the templates may take; files beyond that aren't read. Null for any number.
     *
     * @param list<string> $includePath
     * @param list<string> $off
     * @param list<string> $errors
     * @param list<string> $vouched
     */
    public function __construct(
        public readonly array $includePath = ['.'],
        public readonly array $off = [],
        public readonly bool $security = false,
        public readonly ?array $data = null,
        public readonly array $errors = [],
        public readonly array $vouched = [],
        public readonly ?int $memory = null,
    ) {
    }
}
