# Bare Debian systems in folders, for what has to be seen on a machine without anything. To be sourced behind common.sh.
# shellcheck shell=bash
: "${builds:?}" "${root:?}"

# need_chroot sees to it that chroots can be made here.
need_chroot() {
    ((EUID == 0)) || die "a Debian in a folder takes root: run it as root, or in a container"
    # What in_chroot does: a container that masks its /proc forbids this alone.
    unshare --mount --pid --fork mount -t proc proc /proc 2>/dev/null ||
        die "mounting is forbidden here, which a Debian in a folder takes; a container needs --privileged for it"
    type -P debootstrap >/dev/null || install_packages debootstrap
}

# mirror LABEL prints where the machine's own apt finds the archive of that label.
mirror() {
    apt-get indextargets --format "\$(REPO_URI)" "Label: $1" "Origin: Debian" 2>/dev/null | head -n 1
}

# debian_base SUITE sees to it that build/chroots/SUITE.tar is a bare Debian not older than a week, and sets `base` to it.
# Returns 1 when the mirror has failed three times; what fails for another reason ends the script.
debian_base() {
    local suite=$1 main security try folder=$builds/chroots/$1
    base=$folder.tar
    mkdir -p "$builds/chroots"
    exec {base_lock}>"$folder.lock"
    patiently "Waiting for another run" flock "$base_lock"
    if [[ ! $(find "$base" -mtime -7 2>/dev/null) ]]; then
        main=$(mirror Debian) security=$(mirror Debian-Security)
        for try in 1 2 3; do
            echo "Fetching Debian $suite ..."
            rm -rf --one-file-system "$folder"
            # shellcheck disable=SC2086  # no mirror, no argument
            ! isolated --mount-proc \
                debootstrap --variant=minbase --include=ca-certificates "$suite" "$folder" $main >"$folder.log" 2>&1 || break
            grep -qE "^E: (Failed getting|Couldn't download|Invalid Release file|Couldn't find these debs)" "$folder.log" ||
                die "debootstrap fails: $(tail -n 1 "$folder.log"); all of it is in $folder.log"
            [[ $try -lt 3 ]] || return 1
            sleep 10
        done
        # Debian unstable gets its fixes without an archive of their own.
        [[ -z $main || -z $security || $suite == sid ]] || echo "deb $security $suite-security main" >>"$folder/etc/apt/sources.list"
        # Certificates that this machine trusts besides the usual ones.
        cp -R /usr/local/share/ca-certificates/. "$folder/usr/local/share/ca-certificates"
        in_chroot "$folder" update-ca-certificates >>"$folder.log" 2>&1
        rm -f "$folder"/var/cache/apt/archives/*.deb
        tar -C "$folder" -cf "$base.new" .
        mv "$base.new" "$base"
        rm -rf --one-file-system "$folder"
    fi
    exec {base_lock}>&-
}

# isolated COMMAND... runs a command, behind options of unshare, with mounts and processes of its own. They go with it,
# whatever ends it. In the background: a signal that the script has a trap for doesn't wait for its end.
isolated() {
    local status=0
    setpriv --pdeathsig KILL unshare --mount --pid --ipc --fork --kill-child "$@" &
    isolated_job=$!
    wait "$isolated_job" || status=$?
    isolated_job=
    return "$status"
}

# in_chroot FOLDER COMMAND... runs the command as root with FOLDER as its root folder, isolated.
in_chroot() {
    local folder=$1 settings=() name
    shift
    for name in http_proxy https_proxy no_proxy NODE_EXTRA_CA_CERTS; do
        [[ ! -v $name ]] || settings+=("$name=${!name}")
    done
    cp -L /etc/resolv.conf "$folder/etc/resolv.conf"
    # shellcheck disable=SC2016
    isolated sh -ec '
        mount --bind "$0" "$0"
        cd "$0"
        mount --rbind /dev dev
        mount -t proc proc proc
        mount -t tmpfs tmpfs run
        exec env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
            DEBIAN_FRONTEND=noninteractive "$@"' "$folder" "${settings[@]}" chroot . "$@"
}

# clean_copy FOLDER makes a clone of the repository there, with the tracked files as they lie in the folders now.
clean_copy() {
    local tree=$1 file
    git clone -q "$root" "$tree"
    (cd "$root" && git ls-files -z --deduplicate | while IFS= read -rd '' file; do
        if [[ -e $file || -L $file ]]; then printf '%s\0' "$file"; else rm "$tree/$file"; fi
    done | tar --null --no-recursion --files-from=- -c) | tar -C "$tree" -x --no-same-owner
    git -C "$tree" add -A
}
