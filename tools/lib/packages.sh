# Installing what a fresh Debian machine lacks. Sourced after steps.sh.

build_packages=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix rapidjson-dev)
wine_packages=(wine wine64 xvfb xauth fonts-liberation fonts-wine)
test_packages=(googletest clang clang-format-19 libclang-rt-dev python3 python3-pefile osslsigncode openssl)
picture_packages=(imagemagick)
packaging_packages=(wixl msitools faketime zip pandoc python3)

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

can_be_root() {
    [ "$(id -u)" = 0 ] || { command -v sudo >/dev/null && sudo -n true 2>/dev/null; } ||
        { command -v sudo >/dev/null && [ -t 0 ] && sudo -v; }
}

# need_packages NAME...: installs those that are missing.
need_packages() {
    local name missing=()
    command -v dpkg-query >/dev/null || fail "this is no Debian system; please install by hand: $*"
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} = 0 ] && return
    can_be_root || fail "missing packages and neither root nor sudo to install them: ${missing[*]}"
    if ! try_step "Package lists" as_root apt-get update; then
        fail "the package lists cannot be fetched (no network?); missing: ${missing[*]}"
    fi
    if ! try_step "Install ${#missing[@]} packages" \
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; then
        tail -n 3 "$step_log" >&2
        fail "packages cannot be installed (no network?): ${missing[*]}"
    fi
}
