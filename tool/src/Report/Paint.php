<?php

namespace TemplateTool\Report;

use Symfony\Component\Console\Color;

/** Colours, where they are wanted. */
final class Paint
{
    public function __construct(private bool $isOn)
    {
    }

    public function __invoke(string $text, string $colour = '', string ...$options): string
    {
        return $this->isOn && $text !== '' ? (new Color($colour, '', $options))->apply($text) : $text;
    }
}
