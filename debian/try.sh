#!/bin/bash
# try.sh PACKAGES MANUAL tries the packages of a folder on a bare Debian, as root: installs them, asks for a page as
# MANUAL/deployment.md shows it, upgrades, purges; then installs from the sources as it is told there. Prints a line for each step: TRIED, its name and, when there is one, its
# fault, parted by tabs. It changes the machine that it runs on.
set -u
packages=$1 manual=$2
module=$(basename "$(echo "$packages"/php*-template_*.deb)" | cut -d_ -f1)
version=${module#php} version=${version%-template}

# tried NAME COMMAND... runs the command; what it prints is the fault when it fails.
tried() {
    local name=$1 output
    shift
    if output=$("$@" 2>&1); then
        printf 'TRIED\t%s\n' "$name"
    else
        printf 'TRIED\t%s\t%s\n' "$name" "$(tail -n 5 <<<"${output:-it fails}" | tr '\n\t' '  ')"
    fi
}

# block LANGUAGE PATTERN prints the manual's first block of the language with such a line.
block() {
    awk -v start="^\`\`\`$1\$" -v pattern="$2" '
        $0 ~ start { inside = 1; text = ""; next }
        /^```$/ { if (inside && text ~ pattern) { printf "%s", text; exit } inside = 0 }
        inside { text = text $0 "\n" }' "$manual/deployment.md"
}

install() {
    apt-get install -y --no-install-recommends "$packages/$module"_*.deb "$packages"/template-tool_*.deb \
        "php$version-fpm" nginx apache2 iproute2
}

render() {
    [[ $(php -r 'echo template("Hello {name}!", ["name" => "Ann"], true);') == "Hello Ann!" ]] &&
        "php-fpm$version" -m | grep -qx template
}

check() {
    cd /srv/site/templates && template check . && template render --set title=Tea start.tpl | grep -q Tea
}

library() {
    cd /srv/site/templates && printf 'first\n{a::}' >broken.tpl
    # shellcheck disable=SC2016
    [[ $(php -r 'require "Template/autoload.php";
        try {
            (new Template\Engine("."))->render("broken.tpl");
        } catch (Template\TemplateError $error) {
            echo basename($error->getFile()), " ", $error->getLine();
        }') == 'broken.tpl 2' ]]
}

# A site as the manual has it.
site() {
    mkdir -p /srv/site/public /srv/site/templates
    echo '<h1>{htmlspecialchars title}</h1>' >/srv/site/templates/start.tpl
    { echo '<?php' && block php start.tpl; } >/srv/site/public/index.php
    block ini '\[site\]' | sed "s/8\.2/$version/" >"/etc/php/$version/fpm/pool.d/site.conf"
    block nginx fastcgi_pass >/etc/nginx/conf.d/site.conf
    [[ -s /etc/nginx/conf.d/site.conf && -s /etc/php/$version/fpm/pool.d/site.conf ]]
}

# page COMMAND... asks for the page with the web server of this command, in a network of its own, so that the manual's
# port is free.
page() {
    # shellcheck disable=SC2016
    unshare --net bash -c '
        ip link set lo up
        mkdir -p /run/php
        "php-fpm$0" -F & "$@" &
        for try in {1..50}; do
            reply=$(php -r "echo file_get_contents(\"http://127.0.0.1:8080/\");" 2>&1)
            [[ $reply != "<h1>Bread &amp; butter</h1>"* ]] || break
            sleep 0.2
        done
        kill %1 %2
        wait
        echo "$reply"
        [[ $reply == "<h1>Bread &amp; butter</h1>"* ]]' "$version" "$@"
}

# The manual's lines for Apache, less the service, which there is none of here.
apache() {
    block apache FallbackResource >/etc/apache2/sites-available/site.conf
    { echo 'set -e' && block sh a2ensite | sed '/^systemctl/d'; } >/srv/commands
    grep -q a2ensite /srv/commands && bash /srv/commands || return
    # shellcheck disable=SC2016
    page bash -c '. /etc/apache2/envvars && mkdir -p /run/lock "$APACHE_RUN_DIR" && exec apache2 -D FOREGROUND'
}

is_on() {
    php -m | grep -qx template
}

# A package of the same files with a later version.
newer() {
    rm -rf "$packages/newer"
    dpkg-deb -R "$packages/$module"_*.deb "$packages/newer" &&
        sed -i 's/^Version: .*/&+1/' "$packages/newer/DEBIAN/control" &&
        dpkg-deb -b "$packages/newer" "$packages/newer.deb" && dpkg -i "$packages/newer.deb"
}

keep_off() {
    phpdismod template && ! is_on && newer && ! is_on && phpenmod template && is_on
}

purge() {
    local left
    apt-get purge -y "$module" template-tool && ! is_on || return
    left=$(find /etc/php /var/lib/php /usr/lib/php /usr/bin /usr/share -path '*template*' \( -path "*$module*" -o \
        -name template.so -o -name template.ini -o -path '*/template-tool*' -o -path /usr/bin/template \))
    [[ ! $left ]] || { echo "left behind: $left" && return 1; }
}

# The manual's commands for the sources, less the suite, which has run, and services, which there are none of here.
sources() {
    git -C "$manual/.." checkout-index -a --prefix=/srv/source/ && cd /srv/source || return
    { echo 'set -e' && block sh phpize && block sh phpenmod; } | sed "/^make test/d; /^systemctl/d; s/8\.2/$version/g" >../commands
    grep -q phpenmod ../commands && bash ../commands && render
}

# Services are started here, by hand.
printf '#!/bin/sh\nexit 101\n' >/usr/sbin/policy-rc.d
chmod +x /usr/sbin/policy-rc.d
tried install install
tried render render
tried 'settings of the manual' site
tried 'a page through php-fpm and nginx' page nginx -g 'daemon off;'
tried 'a page through php-fpm and Apache' apache
tried 'the tool' check
tried 'the library' library
tried 'an upgrade keeps phpdismod' keep_off
tried purge purge
tried 'from the sources' sources
printf 'TRIED\tall\n'
