#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# packages.sh [--thorough]: ./package builds the same bytes in whatever directory, which lintian finds in order, and
# they serve in a system that is thrown away afterwards: installed, used, upgraded, purged.
# --thorough, by hand, builds the second time without the compiler's cache, which could hide a path, and uses the
# programs once more where nothing else is installed than what they ask for.
# Skipped (77) where packages cannot be tried.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
thorough=${1:-}
fail() { printf '%s\n' "$@" >&2; exit 1; }
skip() { printf '%s\n' "Skipped: $*"; exit 77; }

[ "$(id -u)" -eq 0 ] || skip "only root can install packages."
command -v apt-get >/dev/null || skip "there is no apt-get here."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$here/throw_away.sh" true || skip "no file system can be laid over this one."

"$here/../../package" "$work/first" >"$work/log" 2>&1 || fail "$(cat "$work/log")"
[ -z "$thorough" ] || export CCACHE_DISABLE=1
"$here/../../package" "$work/some/where/else" >"$work/log" 2>&1 || fail "$(cat "$work/log")"
for file in "$work"/first/*.{deb,dsc,tar.xz}; do
    cmp "$file" "$work/some/where/else/${file##*/}" || fail "Two builds of ${file##*/} differ."
done
lintian --fail-on error,warning "$work"/first/*.changes || fail "lintian objects."

# What would follow, from the same build.
mkdir "$work/next"
cd "$work"/first/pba-view-*/
sed -i '1s/(\(.*\))/(\1+test)/' debian/changelog
dpkg-buildpackage --build=binary --no-pre-clean --no-sign >"$work/log" 2>&1 || fail "$(cat "$work/log")"
mv ../*+test*.deb "$work/next"

"$here/throw_away.sh" "$here/life.sh" "$work" $thorough
