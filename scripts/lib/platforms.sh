# The platforms of scripts/matrix and how each is brought up. To be sourced behind chroot.sh.
# shellcheck shell=bash
: "${builds:?}" "${matrix:=$builds/matrix}"

# Name, Debian's release, how its PHP is brought up, its php-config there, what it is.
# shellcheck disable=SC2034
platforms='
debian12          bookworm  packages  php-config8.2                         PHP 8.2, Debian 12
no-vectors        bookworm  packages  php-config8.2                         PHP 8.2, the module without vector instructions
old-headers       bookworm  headers   /opt/old-headers/php-config           PHP 8.2, the module built for an older release of it
arm64             bookworm  emulated  /opt/arm64/php-config                 PHP 8.2, arm64 under qemu
s390x             bookworm  emulated  /opt/s390x/php-config                 PHP 8.2, s390x under qemu: the highest byte of a number first
php8.2-debug-zts  bookworm  compiled  /opt/php8.2-debug-zts/bin/php-config  PHP 8.2 compiled with --enable-debug and --enable-zts, and eight threads
php8.2-zts        bookworm  compiled  /opt/php8.2-zts/bin/php-config        PHP 8.2 compiled with --enable-zts, and eight threads
php8.4-zts        bookworm  compiled  /opt/php8.4-zts/bin/php-config        PHP 8.4 compiled with --enable-zts, and eight threads
debian13          trixie    packages  php-config8.4                         PHP 8.4, Debian 13
php8.5            sid       packages  php-config8.5                         PHP 8.5, Debian unstable
php8.6            sid       packages  php-config8.6                         PHP 8.6 release candidate, Debian experimental
'
# shellcheck disable=SC2034
declare -A platform_options=(
    [no-vectors]="CPPFLAGS=-DTEMPLATE_NO_VECTORS"
    [arm64]="--host=aarch64-linux-gnu CC=aarch64-linux-gnu-gcc CXX=aarch64-linux-gnu-g++"
    [s390x]="--host=s390x-linux-gnu CC=s390x-linux-gnu-gcc CXX=s390x-linux-gnu-g++"
)

NO_ANSWER=75 # the status of what fails because a mirror doesn't answer

# Libraries that tests use.
libraries="php-symfony-console php-symfony-http-foundation php-illuminate-view php-nyholm-psr7"

# fetch SYSTEM COMMAND... runs a command of apt-get there, three times if it has to.
fetch() {
    local system=$1 try
    shift
    for try in 1 2 3; do
        in_chroot "$system" apt-get -q -o Acquire::Check-Valid-Until=false -o Acquire::Retries=2 "$@" && return
        [[ $try -eq 3 ]] || sleep 10
    done
    return "$NO_ANSWER"
}

# install SYSTEM PACKAGE...
install() {
    local system=$1
    shift
    fetch "$system" install -y --no-install-recommends --download-only "$@" && in_chroot "$system" apt-get install -q -y --no-install-recommends "$@"
}

# packages VERSION prints the packages of a PHP that a test run takes.
packages() {
    printf "php$1-%s " cli dev sqlite3 mbstring xml intl
}

# make_system SUITE sees to it that build/matrix/SUITE is a Debian with its PHPs.
make_system() {
    local suite=$1 system=$matrix/$1 main security wanted="g++ make valgrind $libraries"
    case $suite in
        bookworm) wanted+=" dpkg-dev libxml2-dev pkg-config $(packages 8.2)" ;;
        trixie) wanted+=" $(packages 8.4)" ;;
        sid) wanted+=" $(packages 8.5) $(packages 8.6)" ;;
    esac
    [[ $(cat "$system/srv/made" 2>/dev/null) != "$wanted" ]] || return 0
    debian_base "$suite" || return "$NO_ANSWER"
    rm -rf --one-file-system "$system"
    mkdir -p "$system"
    # shellcheck disable=SC2154  # debian_base sets it
    tar -C "$system" -xpf "$base"
    main=$(sed -n 's/^deb \([^ ]*\) .*/\1/p' "$system/etc/apt/sources.list" | head -n 1)
    security=$(mirror Debian-Security)
    case $suite in
        bookworm)
            printf 'deb-src %s %s main\n' "$main" bookworm "$main" trixie
            [[ ! $security ]] || printf 'deb-src %s %s-security main\n' "$security" bookworm "$security" trixie
            ;;
        sid) echo "deb $main experimental main" ;;
    esac >>"$system/etc/apt/sources.list"
    fetch "$system" update || return
    # shellcheck disable=SC2086
    install "$system" $wanted || return
    echo "$wanted" >"$system/srv/made"
}

bring_up_packages() {
    return 0
}

# Compiles a PHP from Debian's source package: the newest one that is complete on the mirror. The engine's tests need no
# other extensions.
bring_up_compiled() {
    local name=$1 system=$matrix/bookworm source=${1%%-*} options version
    options=${1#"$source"}
    options=${options//-/ --enable-}
    [[ $name != *-zts ]] || options+=" --enable-embed"
    [[ ! -x $system/opt/$name/bin/php-config ]] || return 0
    # shellcheck disable=SC2016
    in_chroot "$system" sh -c '
        mkdir -p /srv/sources && cd /srv/sources
        ls "$0"_*.dsc >/dev/null 2>&1 && exit
        for version in $(apt-cache showsrc "$0" | sed -n "s/^Version: //p" | sort -Vru); do
            for try in 1 2 3; do
                apt-get source -q --download-only "$0=$version" && exit
            done
            rm -f "$0"_*
        done
        exit 1' "$source" || return "$NO_ANSWER"
    # shellcheck disable=SC2016
    in_chroot "$system" sh -ec '
        cd /srv/sources
        rm -rf "$0"
        dpkg-source --no-check --skip-patches -x "$1"_*.dsc "$0"
        cd "$0"
        ./configure --quiet CFLAGS="-O1 -w" --prefix="/opt/$0" --disable-all --enable-cli --disable-cgi --disable-phpdbg \
            --with-libxml --enable-simplexml $2
        make -j"$(nproc)"
        make install-headers install-build install-programs install-cli $(case $2 in *embed*) echo install-sapi ;; esac)
        cd .. && rm -rf "$0"' "$name" "$source" "$options"
}

# Has a php-config name the headers of the oldest release of PHP 8.2 that the mirror has.
bring_up_headers() {
    local system=$matrix/bookworm version
    [[ ! -x $system/opt/old-headers/php-config ]] || return 0
    version=$(in_chroot "$system" apt-cache madison php8.2-dev | sed 's/ //g' | awk -F'|' '$3 ~ /Packages/ { print $2 }' | sort -V | head -n 1)
    # shellcheck disable=SC2016
    in_chroot "$system" sh -ec '
        mkdir -p /opt/old-headers && cd /opt/old-headers
        for try in 1 2 3; do
            ! apt-get download -q "php8.2-dev=$0" || break
        done
        dpkg -x php8.2-dev_*.deb .' "$version" || return "$NO_ANSWER"
    write_config "$system/opt/old-headers" /usr/bin/php8.2
}

# Unpacks the packages of another processor into a folder: installed beside them they would remove the system's own PHP.
bring_up_emulated() {
    local processor=$1 system=$matrix/bookworm machine=${1/arm64/aarch64}
    [[ ! -x $system/opt/$processor/php-config ]] || return 0
    in_chroot "$system" dpkg --add-architecture "$processor"
    fetch "$system" update && install "$system" "g++-$machine-linux-gnu" qemu-user-static || return
    # Looked up as on a machine of that processor which has nothing yet: versions may differ from those of this one.
    # shellcheck disable=SC2016
    in_chroot "$system" sh -ec '
        mkdir -p "/opt/$0/packages" && cd "/opt/$0/packages"
        other="-q -o APT::Architecture=$0 -o APT::Architectures=$0 -o Dir::State::status=/dev/null -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache="
        apt-get $other install -s --no-install-recommends php8.2-cli php8.2-mbstring php8.2-xml php8.2-intl php8.2-sqlite3 |
            sed -n "s/^Inst \([^ ]*\).*/\1/p" >list
        grep -qx php8.2-cli list
        for try in 1 2 3; do
            ! apt-get $other download $(cat list) php8.2-dev || break
        done
        for package in *.deb; do
            dpkg -x "$package" ..
        done
        rm *.deb' "$processor" || return "$NO_ANSWER"
    cat >"$system/opt/$processor/php" <<SH
#!/bin/sh
exec qemu-$machine-static -L /opt/$processor -0 "\$0" /opt/$processor/usr/bin/php8.2 "\$@"
SH
    chmod +x "$system/opt/$processor/php"
    write_config "$system/opt/$processor" "/opt/$processor/php"
}

# write_config FOLDER PHP writes php-config and phpize of Debian's PHP 8.2 with the headers below FOLDER.
write_config() {
    local folder=$1 php=$2
    ln -sf /usr/bin/phpize8.2 "$folder/phpize"
    cat >"$folder/php-config" <<SH
#!/bin/sh
case \$1 in
    --php-binary) echo $php ;;
    *) /usr/bin/php-config8.2 "\$@" | sed 's,/usr/include,/opt/${folder##*/}/usr/include,g' ;;
esac
SH
    chmod +x "$folder/php-config"
}
