# shellcheck shell=bash
# Shared by ./run, ./test and .ci/run: the packages, the builds, and one line for each step. Sourced from the
# project's folder, with "set -euo pipefail".

say() { printf '==> %s\n' "$*"; }

fail() {
    printf '==> FAILED: %s\n' "$*" >&2
    exit 1
}

# step <what it does> <command...>: says it, keeps the command's output in a file, and shows that only when the
# command fails.
step() {
    local what=$1 log
    shift
    say "$what"
    mkdir -p build/log
    log=build/log/$(tr -cs 'A-Za-z0-9\n' '-' <<<"$what" | cut -c 1-60).txt # a list of packages makes a long name
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        fail "$what (everything it said: $log)"
    fi
}

# packages <group...>: the names in these groups of packages.txt.
packages() {
    awk -v wanted=" $* " '
        /^#/ || /^$/ { next }
        /^\[/ { group = substr($0, 2, length($0) - 2); next }
        index(wanted, " " group " ")' packages.txt
}

missing_packages() {
    local name
    for name in $(packages "$@"); do
        dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || echo "$name"
    done
}

# install <group...>: installs what is missing of these groups; says nothing when all is there.
install() {
    local missing as_root=()
    command -v dpkg-query >/dev/null || {
        say "No Debian system: packages.txt lists what must be installed here"
        return
    }
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing, and installing them takes root: $missing"
        as_root=(sudo)
        sudo -v || fail "these packages are missing, and sudo was refused: $missing"
    fi
    step "Reading the package lists" "${as_root[@]}" apt-get -q update
    # shellcheck disable=SC2086
    step "Installing $missing" \
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qy --no-install-recommends install $missing
}

# configure <preset> [-D<name>=<value>...]: only where that isn't done yet; ninja sees to later changes by itself.
configure() {
    local preset=$1 option done=yes
    shift
    [ -f "build/$preset/build.ninja" ] || done=no
    for option in "$@"; do
        option=${option#-D}
        grep -qs "^${option%%=*}:[A-Z]*=${option#*=}\$" "build/$preset/CMakeCache.txt" || done=no
    done
    [ $done = yes ] || step "Configuring build/$preset" cmake --preset "$preset" "$@"
}

# build <preset> <what> [<target>...]: what changed since the last time, which is often nothing.
build() {
    local preset=$1 what=$2
    shift 2
    local command=(cmake --build --preset "$preset")
    [ $# = 0 ] || command+=(--target "$@")
    step "Building $what in build/$preset (minutes at first, seconds when little has changed)" "${command[@]}"
}
