<?php

/*
 * What opcache preloads in the soak: a class of a site that renders, compiled and called before any request.
 */

final class PreloadedPage
{
    public static function render(string $name): ?string
    {
        return template('Hello {htmlspecialchars name}', ['name' => $name], true);
    }
}

if (PreloadedPage::render('A & B') !== 'Hello A &amp; B') {
    throw new LogicException('The function does not work while scripts are preloaded.');
}
