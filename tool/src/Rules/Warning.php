<?php

namespace TemplateTool\Rules;

/** What there is to know about a warning; "template explain" shows it. */
final class Warning
{
    /**
     * $bad gives exactly this warning, $good none. $data: the sample data that both need, null when the warning needs
     * none. $isSecurity: whether it is one of --security.
     */
    public function __construct(
        public readonly string $name,
        public readonly string $summary,
        public readonly string $why,
        public readonly string $bad,
        public readonly string $good,
        public readonly ?array $data = null,
        public readonly bool $isSecurity = false,
    ) {
    }
}
