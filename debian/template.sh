#!/bin/sh
# The tool runs with the first PHP that has the engine: the one called "php", or another version that is installed.
for php in php /usr/bin/php[0-9]*.[0-9]*; do
    if command -v "$php" >/dev/null && "$php" --rf template >/dev/null 2>&1; then
        exec "$php" /usr/share/template-tool/bin/template "$@"
    fi
done
echo 'template: no PHP here has the engine: install php8.2-template or php8.4-template, or run "phpenmod template"' >&2
exit 2
