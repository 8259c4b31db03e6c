# What the scripts of this folder share: tools, packages, builds. To be sourced by bash.
# shellcheck shell=bash

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
builds=$root/build

die() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

[[ $root != *[[:space:]]* ]] || die "phpize can't build in a folder with white space in its name: $root"

# Sets php, phpize, php_config and php_version ("8.4"): those of the PHP whose php-config the variable PHP_CONFIG names, or
# of the machine's own. Sets php_package to what the names of its Debian packages begin with, or to nothing, and sqlite to
# the options that load PDO's driver where it isn't built in.
find_php() {
    local extension name
    php_config=$(type -P "${PHP_CONFIG:-php-config}") || return
    name=$(basename "$(realpath "$php_config")")
    phpize=$(type -P "$(dirname "$php_config")/phpize${name#php-config}") || return
    php=$("$php_config" --php-binary) && [[ -x $php ]] || return
    php_version=$("$php_config" --version | cut -d. -f1,2)
    php_package=
    [[ ! -e /etc/debian_version || $name != "php-config$php_version" ]] || php_package=php$php_version
    sqlite=()
    for extension in pdo pdo_sqlite; do
        "$php" -n -m | grep -qix "$extension" || sqlite+=(-d "extension=$extension")
    done
}

# The command of this PHP with the given name: Debian's, which carries the version, or the plain one.
php_command() {
    type -P "$1$php_version" || type -P "$1"
}

# Installs the given Debian packages.
install_packages() {
    local as_root=()
    type -P apt-get >/dev/null || die "these are missing and there is no apt-get to install them: $*"
    if ((EUID)); then
        type -P sudo >/dev/null || die "these are missing; as root, run: apt-get install $*"
        as_root=(sudo)
    fi
    echo "Installing $* ..."
    mkdir -p "$builds"
    {
        "${as_root[@]}" apt-get update || true
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
    } >"$builds/apt.log" 2>&1 || die "apt-get could not install $*; the reason is in $builds/apt.log"
}

# Sees to it that the machine has what a build needs, and the commands that are given besides.
# A command is installed from the package of its name.
need_tools() {
    local missing=() command
    if ! find_php; then
        [[ ! ${PHP_CONFIG-} ]] || die "PHP_CONFIG is $PHP_CONFIG, but there is no such php-config with its php and phpize"
        missing+=(php-cli php-dev php-sqlite3)
    elif [[ $php_package && $("$php" -n "${sqlite[@]}" -m 2>/dev/null) != *pdo_sqlite* ]]; then
        missing+=("$php_package-sqlite3")
    fi
    for command in g++ make "$@"; do
        type -P "$command" >/dev/null || missing+=("$command")
    done
    [[ ${#missing[@]} -eq 0 ]] || install_packages "${missing[@]}"
    find_php || die "no php-config with its php and phpize; name one by the variable PHP_CONFIG"
}

# build VARIANT [VARIABLE=VALUE...] builds the module in build/VARIANT, unless it is up to date there,
# and sets `module` to its path. The variables go to configure (CXXFLAGS, LDFLAGS),
# and so do the words of CONFIGURE_OPTIONS, by which a build for another processor is asked for.
# Nobody else builds or tests this variant until the calling script ends.
build() {
    local variant=$1 stamp sources options
    local folder=$builds/$variant
    shift
    read -ra options <<<"${CONFIGURE_OPTIONS-}"
    set -- "${options[@]}" "$@"
    module=$folder/modules/template.so
    mkdir -p "$builds"
    exec {lock}>"$folder.lock"
    flock --nonblock "$lock" || { echo "Waiting for another run ..." && flock "$lock"; }

    mapfile -t sources < <(cd "$root" && find config.m4 src -name '*.m4' -o -name '*.cpp' -o -name '*.h' | sort)
    stamp=$({ "$php" -n -v && echo "$@" && cd "$root" && sha256sum "${sources[@]}"; } | sha256sum)
    [[ ! -e $module || $(cat "$folder/stamp" 2>/dev/null) != "$stamp" ]] || return 0

    echo "Building ..."
    rm -rf "$folder"
    mkdir "$folder"
    (cd "$root" && cp --parents -t "$folder" "${sources[@]}")
    (cd "$folder" && "$phpize" && ./configure --enable-template --with-php-config="$php_config" "$@" && make -j"$(nproc)") \
        >"$folder.log" 2>&1 || { tail -n 20 "$folder.log" >&2 && die "the build failed; all of it is in $folder.log"; }
    echo "$stamp" >"$folder/stamp"
}
