#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# installed.sh SOURCE BUILD COMPILER: what BUILD installs serves on its own, in a prefix that nobody knew when it was
# built: a host outside of the project is built against it, by the CMake package and by pkg-config, and shows the
# view.
set -euo pipefail
source=$1 build=$2 compiler=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
fail() { printf '%s\n' "$@" >&2; exit 1; }

cmake --install "$build" --prefix "$prefix" --strip >"$work/log" || fail "$(cat "$work/log")"
"$(dirname "$0")/search_paths.sh" "$prefix/bin" "$prefix/lib"
! grep -rlF "$source" "$prefix" || fail "These name files of the build tree."
for file in man/man8/pba_{admin,host,text}.8 bash-completion/completions/pba_{admin,host}; do
    [ -s "$prefix/share/$file" ] || fail "share/$file is missing."
done
readelf --dynamic "$prefix/lib/libpbe.so" | grep -qF 'soname: [libpbe.so.0]' || fail "libpbe.so is not libpbe.so.0."

cp -R "$prefix/share/doc/pba_view/example_host" "$work"
warnings='-Wall -Wextra -Wpedantic -Werror'
{
    cmake -S "$work/example_host" -B "$work/example" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$warnings"
    cmake --build "$work/example"
} >"$work/log" 2>&1 || fail "$(cat "$work/log")"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
read -ra flags < <(pkg-config --cflags --libs pba_view)
module=$(pkg-config --variable=module pba_view)
"$compiler" -std=c++20 $warnings -DVIEW_MODULE="\"$module\"" "$work/example_host/main.cpp" "${flags[@]}" \
    -o "$work/by_pkg_config"

# Nobody types here: the view logs on by its file.
pba=$work/root/pba
mkdir -p "$pba"
cp -R "$prefix/share/pba/texts/de/." "$pba"
"$prefix/bin/pba_admin" settings compile "$prefix/share/pba/settings/de.json" "$pba/settings.bin"
printf 'anna\ngreen quill 7\n' >"$pba/autolgn.txt"
expected='Init
IsAutologonSuppressed
StartLoginByPassword
Login
StartOperatingSystem
Run: 0x00000000, the system starts'
for host in "$work/example/example_host" "env LD_LIBRARY_PATH=$prefix/lib $work/by_pkg_config"; do
    said=$($host "$work/root") || fail "$host ended with $?:" "$said"
    [ "$said" = "$expected" ] || fail "$host said:" "$said"
done

# The installed host finds the installed module: it gets as far as looking for the display.
printf 'green quill 7\n' | "$prefix/bin/pba_admin" volume create "$work/volume" --size 20M --user anna --iter-time 10 \
    --password-stdin
said=$(env -u DISPLAY QT_QPA_PLATFORM=xcb \
    "$prefix/bin/pba_host" --root "$work/root" --volume "$work/volume" 2>&1) || code=$?
[[ ${code-0} = 1 && $said = *display* ]] || fail "pba_host ended with ${code-0}:" "$said"
