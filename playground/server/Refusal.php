<?php

namespace Playground;

/** A request that isn't served, with the status of HTTP and a sentence for the person who made it. */
final class Refusal extends \RuntimeException
{
    public function __construct(public readonly int $status, string $sentence)
    {
        parent::__construct($sentence);
    }
}
