# shellcheck shell=bash disable=SC2154
# Shared by run.sh, test.sh and the other scripts; sourced, never run.
# Expects the repository's root in $root.

say() { printf '%s\n' "$*" >&2; }
fail() { say "$*"; exit 1; }

# package_names LIST...: the names in the lists, without comments.
package_names() { sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$@"; }

# missing_packages LIST...: the packages of the lists that are not installed. One question to dpkg
# for all of them, so that an up-to-date machine is done in a few milliseconds.
missing_packages() {
    local wanted installed
    wanted=$(package_names "$@" | sort -u)
    # dpkg-query ends with 1 when it does not know a name; that name is then missing below.
    # shellcheck disable=SC2086
    installed=$(dpkg-query -W -f='${Package} ${Status}\n' $wanted 2>/dev/null |
        sed -n 's/ install ok installed$//p' | sort -u) || true
    comm -23 <(printf '%s\n' "$wanted") <(printf '%s\n' "$installed")
}

# install_packages LIST...: installs what is missing, with sudo where we are not root.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        # Another system: its own packages may serve, and CMake says what it does not find.
        if ! { command -v cmake && command -v ninja && command -v c++; } >/dev/null; then
            fail "This system has no apt. Install a C++20 compiler, CMake 3.25, Ninja and the" \
                "libraries named in scripts/packages.txt, then start again."
        fi
        return 0
    fi
    local missing as_root=()
    missing=$(missing_packages "$@" | tr '\n' ' ')
    missing=${missing% }
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "These packages are missing, and installing them needs root or sudo: $missing"
        as_root=(sudo)
    fi
    say "Installing: $missing"
    # One failing source of packages need not be the one that we install from.
    "${as_root[@]}" apt-get update -q >&2 || say "apt-get update failed; trying with the known lists."
    # shellcheck disable=SC2086
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends $missing >&2 ||
        fail "These packages could not be installed: $missing"
}

# configure PRESET: makes build/PRESET unless it is there and belongs to this checkout.
configure() {
    local preset=$1 folder=$root/build/$1
    if [ -f "$folder/build.ninja" ] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        return 0
    fi
    # Presets are read from the current directory's project.
    (cd "$root" && cmake --fresh --preset "$preset") >&2
}

# build PRESET [OPTION...] [-- COMMAND...]: configures and builds in build/PRESET with these options of
# cmake --build, under COMMAND if there is one. What the build says goes to standard error: standard
# output is the viewer's.
build() {
    local preset=$1 options=()
    shift
    while [ $# -gt 0 ] && [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    [ $# -eq 0 ] || shift
    configure "$preset"
    "$@" cmake --build "$root/build/$preset" "${options[@]}" >&2 ||
        fail "The build in build/$preset failed; its messages stand above."
}
