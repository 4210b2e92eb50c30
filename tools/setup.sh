# Sourced by play, check and .ci/run: what a fresh Debian machine needs, and how the tree is configured and built.
# $top is the root of the tree.

packages_build=(g++ cmake ninja-build libpng-dev libfmt-dev libcli11-dev libgtest-dev liblzo2-dev libsdl2-dev libfreetype-dev fonts-dejavu-core librsvg2-bin pkg-config python3)
packages_ci=(clang clang-format clang-tidy libbenchmark-dev liblua5.4-dev libpixman-1-dev libclang-rt-14-dev git xvfb xdotool imagemagick)

say() { printf '%s\n' "$*" >&2; }

# Installs those of the packages that are missing, or says what is missing and how to get it.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "This is not a Debian machine: nothing is installed. Needed are: $*"
        return 0
    fi
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local -a root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null || ! sudo -n true 2>/dev/null; then
            say "These packages are missing, and installing them takes rights that you don't have here: ${missing[*]}"
            say "Have them installed with: apt-get install ${missing[*]}"
            return 1
        fi
        root=(sudo -n)
    fi
    say "Installing with apt-get: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${root[@]}" apt-get update &&
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        say "apt-get could not install: ${missing[*]}; the whole of what it said is in $log"
        return 1
    fi
    rm -f "$log"
}

# build PRESET FOLDER [TARGET...]: configures FOLDER when that is due, and builds.
build() {
    local preset=$1 folder=$2
    shift 2
    if [ ! -f "$top/$folder/build.ninja" ]; then
        say "Configuring $folder"
        mkdir -p "$top/$folder"
        if ! (cd "$top" && cmake --preset "$preset") >"$top/$folder/configure.log" 2>&1; then
            cat "$top/$folder/configure.log" >&2
            return 1
        fi
    fi
    # Nothing is said when there is nothing to do.
    if (cd "$top" && ninja -C "$folder" -n "$@") 2>/dev/null | grep -q 'no work to do'; then return 0; fi
    say "Building $folder"
    (cd "$top" && ninja -C "$folder" "$@") >&2
}
