# What all scripts share: tools, packages, builds. To be sourced by bash.
# shellcheck shell=bash

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd -P)
builds=$root/build

die() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# refuse MESSAGE ends the script because of its command line.
refuse() {
    echo "$(basename "$0"): $*; scripts/$(basename "$0") --help tells more" >&2
    exit 2
}

# take_arguments OPTIONS MOST ARGUMENT... reads a script's command line. OPTIONS are parted by blanks; one that ends
# with = has a value. Sets `option`, a map from the options that were given to their values ("yes" for those without),
# and the list `arguments` of at most MOST words. --help prints the comment at the head of the script.
declare -A option=()
arguments=()
# shellcheck disable=SC2034  # the scripts read what this sets
take_arguments() {
    local known=" $1 " most=$2 name value
    shift 2
    while [[ $# -gt 0 ]]; do
        name=${1%%=*} value=yes
        if [[ $1 == --help ]]; then
            sed -n '2,/^[^#]/ { /^# shellcheck/d; s/^# \{0,1\}//p }' "$0"
            exit
        elif [[ $1 != -* ]]; then
            arguments+=("$1")
        elif [[ $name =~ ^--[a-z-]+$ && $known == *" $name= "* ]]; then
            if [[ $1 == *=* ]]; then
                value=${1#*=}
            else
                value=${2-}
                [[ $# -eq 1 ]] || shift
            fi
            [[ $value && $value != -* ]] || refuse "$name needs a value"
            option[$name]=$value
        elif [[ $1 =~ ^--[a-z-]+$ && $known == *" $1 "* ]]; then
            option[$name]=yes
        else
            refuse "there is no option $1"
        fi
        shift
    done
    [[ ${#arguments[@]} -le $most ]] || refuse "\"${arguments[most]}\" is one argument too many"
}

# patiently WHAT COMMAND... runs the command, and says what takes so long when ten seconds have gone by.
patiently() {
    local what=$1 status=0 never clock
    shift
    exec {never}<> <(:)
    { read -rt 10 -u "$never" || echo "$what ..."; } &
    clock=$!
    "$@" || status=$?
    { kill "$clock" && wait "$clock"; } 2>/dev/null || true
    exec {never}<&-
    return "$status"
}

isolated_job= # that of `isolated`, in chroot.sh
# scratch_folder NAME makes a folder for this run alone and sets `scratch` to it. It goes when the script ends; what a
# script left that was killed goes now.
scratch_folder() {
    local name=$1 old held
    mkdir -p "$builds/scratch"
    for old in "$builds/scratch/$name".*; do
        [[ -d $old ]] || continue
        exec {held}>"$old.lock"
        ! flock --nonblock "$held" || rm -rf --one-file-system "$old" "$old.lock"
        exec {held}>&-
    done
    scratch=$(mktemp -d "$builds/scratch/$name.XXXXXX")
    exec {held}>"$scratch.lock"
    flock "$held"
    trap '[[ ! $isolated_job ]] || { kill -KILL "$isolated_job" && wait "$isolated_job"; } 2>/dev/null || true
        rm -rf --one-file-system "$scratch" "$scratch.lock"' EXIT
    trap 'exit 1' HUP INT TERM
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
    mkdir -p "$builds"
    exec {apt_lock}>"$builds/apt.lock"
    patiently "Waiting for another installation" flock "$apt_lock"
    echo "Installing $* ..."
    {
        "${as_root[@]}" apt-get update || true
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -o DPkg::Lock::Timeout=600 install -y --no-install-recommends -- "$@"
    } >"$builds/apt.log" 2>&1 || die "apt-get could not install $*; the reason is in $builds/apt.log"
    exec {apt_lock}>&-
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
# Nobody else builds this variant until the calling script ends; others may use it meanwhile.
build() {
    local variant=$1 stamp sources options
    local folder=$builds/$variant
    shift
    read -ra options <<<"${CONFIGURE_OPTIONS-}"
    set -- "${options[@]}" "$@"
    module=$folder/modules/template.so
    mkdir -p "$builds"
    exec {lock}>"$folder.lock"
    patiently "Waiting for another run" flock "$lock"

    mapfile -t sources < <(cd "$root" && find config.m4 src -name '*.m4' -o -name '*.cpp' -o -name '*.h' | sort)
    stamp=$({ "$php" -n -v && echo "$@" && cd "$root" && sha256sum "${sources[@]}"; } | sha256sum)
    if [[ -e $module && $(cat "$folder/stamp" 2>/dev/null) == "$stamp" ]]; then
        flock --shared "$lock"
        return
    fi

    echo "Building ..."
    rm -rf "$folder"
    mkdir "$folder"
    (cd "$root" && cp --parents -t "$folder" "${sources[@]}")
    (cd "$folder" && "$phpize" && ./configure --enable-template --with-php-config="$php_config" "$@" && make -j"$(nproc)") \
        >"$folder.log" 2>&1 || { tail -n 20 "$folder.log" >&2 && die "the build failed; all of it is in $folder.log"; }
    echo "$stamp" >"$folder/stamp"
    flock --shared "$lock"
}
