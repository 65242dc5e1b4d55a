# Where the 32-bit Wine lives and how it is made usable. Sourced.
#
# Debian's wine32 needs a whole i386 system around it; on a 64-bit machine that is a folder made by debootstrap,
# kept in the user's cache so that every clone shares it.

wine32_root() {
    local release
    release=$(. /etc/os-release && echo "${VERSION_CODENAME:-bookworm}")
    echo "${TARV_WINE32_ROOT:-${XDG_CACHE_HOME:-$HOME/.cache}/tarvenik/wine32-$release}"
}

# wine32_install ROOT: makes the folder. Needs root once (see as_root in packages.sh).
wine32_install() {
    local target=$1 partial=$1.partial release mirror attempt
    release=${target##*-}
    # The mirror this machine installs from; debootstrap's own default where apt does not tell.
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $release" 2>/dev/null | head -n 1)
    mkdir -p "$(dirname "$target")"
    for attempt in 1 2 3; do
        as_root rm -rf --one-file-system "$partial"
        if as_root debootstrap --arch=i386 --variant=minbase --include=wine32,wine "$release" "$partial" ${mirror:+"$mirror"}; then
            # Mount points are made in it later, without root where the user is not root.
            as_root chown -R "$(id -u):$(id -g)" "$partial"
            mv "$partial" "$target"
            return 0
        fi
        echo "attempt $attempt failed"
        sleep 5
    done
    return 1
}

# wine32_mount ROOT FOLDER...: makes FOLDERs visible at the same path inside ROOT. Call it only inside a mount
# namespace of your own.
wine32_mount() {
    local inside=$1 folder
    shift
    mount --rbind /proc "$inside/proc"
    mount --rbind /dev "$inside/dev"
    for folder in "$@"; do
        mkdir -p "$folder" "$inside$folder"
        mount --rbind "$folder" "$inside$folder"
    done
}
