<?php

/**
 * What the extension "template" adds to PHP, for editors: add this file to the libraries of your project. It is never
 * run.
 */

/**
 * Renders a template with data.
 *
 * A template is text with tags in braces:
 *
 * - `{user::name}` prints a value; `{user::name user::nick 'nobody'}` the first that exists, else the text.
 * - `{htmlspecialchars user::name}` prints it escaped; so do `htmlentities`, `addslashes` and `rawurlencode`.
 * - `{dynamic row,rows}...{row::*::title}...{/dynamic}` repeats its body for each element, `{rdynamic}` backwards;
 *   `*` is the element and `[*]` its key, of the loop in front of it or of the innermost one.
 * - `{optional user}...{/optional}` shows its body when the value is true, `{!optional user}` when it isn't;
 *   `{optional colour red}` compares.
 * - `{include footer.tpl}` puts another file in its place.
 * - `{{` and `}}` print a brace. A `{` in front of a blank or a line break needs no doubling.
 *
 * On any error PHP raises one warning (E_WARNING) with the name of the template, and the result is null. There is never
 * half a page. Plain tags escape nothing.
 *
 *     $html = template('page.tpl', ['user' => ['name' => 'Ann']]);
 *     $text = template('Hello {name}!', ['name' => 'Ann'], true);
 *
 * @param string $fileName The path of the template, opened as `include` would: with the include path and with stream
 *     wrappers, so it must not come from a visitor. In string mode the template itself. Ends at its first NUL byte.
 * @param array<array-key, mixed> $userData The data. It is never changed. A path through it leads through arrays; its
 *     first key is never an integer.
 * @param bool $string_mode Whether the first argument is the template itself. Includes in it are still files.
 *
 * @return string|null The page, or null after a warning.
 */
function template(string $fileName, array $userData, bool $string_mode = false): ?string
{
}
