# SPDX-License-Identifier: Apache-2.0
# Shared by run, test, package and bench.sh: packages, builds, X servers. To be sourced from the project's directory.

export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

say() { printf '%s\n' "$@" >&2; }
fail() { say "$*"; exit 1; }
as_root() { if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi; }

# Installs what is missing of the packages listed in files, a name a line.
install_packages()
{
    local missing=() name
    while read -r name; do
        case $name in '' | '#'*) continue ;; esac
        dpkg-query -W -f='${db:Status-Abbrev}' "$name" 2>/dev/null | grep -q '^ii' || missing+=("$name")
    done < <(cat "$@")
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing packages: ${missing[*]}"
    as_root apt-get update -q >&2
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
        "${missing[@]}" >&2
}

# build PRESET [TARGET...]
build()
{
    local preset=$1
    shift
    cmake --preset "$preset" >"build/$preset.configure.log" 2>&1 \
        || { cat "build/$preset.configure.log" >&2; fail "Configuring the preset $preset failed."; }
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

# Starts an X server and sets DISPLAY: start_x_server PROGRAM ARGUMENT...
# The server chooses its number; it ends with this script.
start_x_server()
{
    local numbers number
    numbers=$(mktemp -d)
    mkfifo "$numbers/fifo"
    "$@" -displayfd 3 -noreset -nolisten tcp 3>"$numbers/fifo" 2>"$numbers/errors" &
    X_SERVER=$!
    trap 'kill "$X_SERVER" 2>/dev/null || true' EXIT
    read -r number <"$numbers/fifo" || fail "$1 did not start: $(cat "$numbers/errors")"
    rm -r "$numbers"
    export DISPLAY=":$number"
}
