# Where the 32-bit Wine lives and how it is made usable. Sourced.
#
# Debian's wine32 needs a whole i386 system around it; on a 64-bit machine that is a folder made by debootstrap,
# kept in the user's cache so that every clone shares it.

wine32_root() {
    echo "${TARV_WINE32_ROOT:-${XDG_CACHE_HOME:-$HOME/.cache}/tarvenik/wine32-bookworm}"
}

# wine32_mount ROOT FOLDER...: makes FOLDERs visible at the same path inside ROOT. Call it only inside a mount
# namespace of your own.
wine32_mount() {
    local inside=$1 folder
    shift
    mount -t proc proc "$inside/proc"
    mount --rbind /dev "$inside/dev"
    for folder in "$@"; do
        mkdir -p "$folder" "$inside$folder"
        mount --rbind "$folder" "$inside$folder"
    done
}
