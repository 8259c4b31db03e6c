<?php

namespace TemplateTool\Page;

/**
 * Follows a language piece by piece, and knows at each point what a value would get into. A scanner is copied where a
 * text has several ways on; a copy shares nothing with the original.
 */
interface Scanner
{
    /** Goes on over text that the author has written. The text may end anywhere. */
    public function read(string $text): void;

    /** Goes on over a value: a text that isn't known, but stays within its place. */
    public function value(): void;

    /** What a value can do here; null when it can do nothing. $following: the text behind it, as far as it is known. */
    public function risk(Escaping $given, string $following = ''): ?Risk;

    /** Two scanners with the same key go on in the same way. */
    public function key(): string;
}
