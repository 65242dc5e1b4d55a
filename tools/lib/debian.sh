# Debian in a folder: a whole small system, made by debootstrap and kept in the user's cache, so that every clone
# shares it. For what this machine's own system cannot run. Sourced; making one needs packages.sh, too.

debian_packages=(debootstrap util-linux)

this_release() { (. /etc/os-release && echo "${VERSION_CODENAME:-bookworm}"); }

# wine_system WINE: what the Wine of that name lives in, as arguments of the functions below.
#   x86     Debian's wine32 needs an i386 system around it
#   wine10  the Wine of Debian 13
wine_system() {
    local fonts="fonts-liberation fonts-wine"
    case $1 in
        x86) echo i386 "$(this_release)" wine32 wine $fonts ;;
        wine10) echo amd64 trixie wine64 wine $fonts ;;
    esac
}

# debian_folder ARCH RELEASE PACKAGE...: where it lies. Other contents are another folder.
debian_folder() {
    printf '%s/tarvenik/%s-%s-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$2" "$1" "$(cksum <<<"${*:3}" | cut -d ' ' -f 1)"
}

# debian_make ARCH RELEASE PACKAGE...: makes it. Needs root once (see as_root in packages.sh).
debian_make() {
    local target partial mirror http_proxy attempt packages="${*:3}"
    target=$(debian_folder "$@")
    partial=$target.partial
    # The mirror and the proxy this machine installs by; debootstrap's own mirror where apt does not tell.
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $(this_release)" 2>/dev/null |
        head -n 1)
    eval "$(apt-config shell http_proxy Acquire::http::Proxy)"
    mkdir -p "$(dirname "$target")"
    for attempt in 1 2 3; do
        as_root rm -rf --one-file-system "$partial"
        if as_root env ${http_proxy:+"http_proxy=$http_proxy"} debootstrap --arch="$1" --variant=minbase \
            --include="${packages// /,}" "$2" "$partial" ${mirror:+"$mirror"}; then
            # Mount points are made in it later, without root where the user is not root.
            [ "$(id -u)" = 0 ] || as_root chown -R "$(id -u):$(id -g)" "$partial"
            mv "$partial" "$target"
            return 0
        fi
        echo "attempt $attempt failed"
        sleep 5
    done
    return 1
}

# debian_mount ROOT FOLDER...: makes FOLDERs visible at the same path inside ROOT. Call it only inside a mount
# namespace of your own.
debian_mount() {
    local inside=$1 folder
    shift
    mount --rbind /proc "$inside/proc"
    mount --rbind /dev "$inside/dev"
    for folder in "$@"; do
        mkdir -p "$folder" "$inside$folder"
        mount --rbind "$folder" "$inside$folder"
    done
}
