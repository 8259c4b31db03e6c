# What the scripts share that need Node. To be sourced by bash, behind common.sh.
# shellcheck shell=bash
: "${builds:?}"

# Sets `node` to the Node that Debian 12's users have: the one of this machine, if it is that old, else Debian's own
# package, unpacked beside it in build/node18.
find_node18() {
    local folder=$builds/node18 version
    node=$(type -P node || true)
    [[ $node && $("$node" --version) == v18.* ]] && return
    node=$folder/node
    [[ -x $node && $("$node" --version) == v18.* ]] && return
    # The package takes these from their folders; they bring no Node.
    install_packages node-cjs-module-lexer node-undici libc-ares2 libnghttp2-14 libuv1
    version=$(apt-cache madison nodejs | awk '$3 ~ /^18\./ { print $3; exit }')
    [[ $version ]] || die "apt-get knows no nodejs of version 18; add Debian 12 to its sources"
    rm -rf "$folder"
    mkdir -p "$folder"
    (cd "$folder" && apt-get download "nodejs=$version" "libnode108=$version" && for file in *.deb; do dpkg -x "$file" .; done) \
        >"$builds/node18.log" 2>&1 || die "Debian's Node 18 can't be had; the reason is in $builds/node18.log"
    cat >"$node" <<SH
#!/bin/sh
LD_LIBRARY_PATH=$(echo "$folder"/usr/lib/*-linux-gnu) exec "$folder/usr/bin/node" "\$@"
SH
    chmod +x "$node"
    "$node" --version >/dev/null || die "Debian's Node 18 doesn't run here"
}
