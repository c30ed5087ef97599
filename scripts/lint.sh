#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Has clang-tidy read all sources, or those given: scripts/lint.sh [FILE...], by the build that ./test asan makes. What
# was found in order is not read again until something changes that the answer depends on: what the compiler sees of
# the source, comments and macros too, its command line, .clang-tidy or the version of clang-tidy.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

export build=build/asan cache=${XDG_CACHE_HOME:-${HOME:-$PWD/build}/.cache}/pba_view/lint

# A number for all that the answer for a source depends on. Paths count from the project, so that the answers serve
# other clones, too. Fails where the build does not know the source.
digest()
{
    local commands
    commands=$(sed -n "s|^ *\"command\": \"\(.* -c $PWD/$1\)\",\$|\1|p" $build/compile_commands.json \
        | sed -E 's/\\(.)/\1/g; s/^\S*ccache //; s/ -MD -MT \S+ -MF \S+//; s/ -o \S+ -c / -E -C -dD /')
    [ -n "$commands" ] || return 1
    {
        clang-tidy --version
        printf '%s\n' "$commands"
        (cd $build && eval "$commands")
    } | cat .clang-tidy - | sed "s|$PWD/\?||g" | sha256sum | cut -d ' ' -f 1
}

read_source()
{
    local known findings
    known=$cache/$(digest "$1") || known=
    if [ -n "$known" ] && [ -e "$known" ]; then
        touch "$known"
        return
    fi
    say "clang-tidy: $1"
    findings=$(clang-tidy -p $build --quiet "$1" 2>&1) || { say "$findings"; return 1; }
    [ -z "$known" ] || : >"$known"
}
export -f digest read_source say

[ -e $build/compile_commands.json ] || fail "There is no build to go by; run ./test asan first."
mkdir -p "$cache"
find "$cache" -type f -mtime +60 -delete
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files '*.cpp' ':!tests' ':!docs')
    set -- "${files[@]}"
fi
printf '%s\0' "$@" \
    | xargs -0 -P "$(nproc)" -n 1 bash -o pipefail -c 'read_source "$1"' read_source \
    || fail "clang-tidy has found something."
