#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# intruder.sh INTRUDER: whoever takes over a screen gets nowhere, even where the file system itself would let
# everybody. As root also: without the walls each step works, so it is they that refuse.
set -eu
intruder=$1
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
mkdir -p "$dir/root/pba"
: >"$dir/root/pba/intruder.txt"
head -c 4096 /dev/zero >"$dir/volume"
chmod -R a+rwX "$dir"

user=
[ "$(id -u)" -ne 0 ] || user=65534:65534
for terminal in '' --terminal; do
    "$intruder" --required $terminal --user "$user" --root "$dir/root" --volume "$dir/volume"
done
[ "$(id -u)" -eq 0 ] || exit 0

"$intruder" --free --root "$dir/root" --volume "$dir/volume"
# Who cannot be confined does not go on.
for user in '' 0:65534 65534:0 65534:65534,0 65534 65534: root nosuchuser; do
    code=0
    "$intruder" --user "$user" --root "$dir/root" --volume "$dir/volume" 2>/dev/null || code=$?
    [ "$code" -eq 101 ] || { echo "user '$user' was taken"; exit 1; }
done
