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

# The command of PHP 8.2 with this name: Debian's, which carries the version, or the plain one.
php_command() {
    type -P "$1"8.2 || type -P "$1"
}

is_php_82() {
    [[ $("$1" -n -r 'echo PHP_MAJOR_VERSION, ".", PHP_MINOR_VERSION;') == 8.2 ]]
}

# Sets php, phpize and php_config, and sqlite: the options that load PDO's driver where it isn't built in.
find_php() {
    local extension
    php=$(php_command php) && is_php_82 "$php" || return
    sqlite=()
    for extension in pdo pdo_sqlite; do
        "$php" -n -m | grep -qix "$extension" || sqlite+=(-d "extension=$extension")
    done
    [[ $("$php" -n "${sqlite[@]}" -m 2>/dev/null) == *pdo_sqlite* ]] || return
    phpize=$(php_command phpize) && php_config=$(php_command php-config)
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
    find_php || missing+=(php8.2-cli php8.2-dev php8.2-sqlite3)
    for command in g++ make "$@"; do
        type -P "$command" >/dev/null || missing+=("$command")
    done
    [[ ${#missing[@]} -eq 0 ]] || install_packages "${missing[@]}"
    find_php || die "no PHP 8.2 with phpize and PDO's SQLite driver; set PATH so that php, phpize and php-config are found"
}

# build VARIANT [VARIABLE=VALUE...] builds the module in build/VARIANT, unless it is up to date there,
# and sets `module` to its path. The variables go to configure (CXXFLAGS, LDFLAGS).
# Nobody else builds or tests this variant until the calling script ends.
build() {
    local variant=$1 stamp sources
    local folder=$builds/$variant
    shift
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
