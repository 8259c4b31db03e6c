#!/bin/sh
# The tool is for the PHP that this package extends, whichever one is called "php".
command -v php8.2 >/dev/null || {
    echo 'template: install php8.2-cli and php-symfony-console' >&2
    exit 2
}
exec php8.2 /usr/share/php8.2-template/bin/template "$@"
