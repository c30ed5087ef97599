#!/usr/bin/env bash
# prepare_demo.sh PBA_ADMIN DIR: settings, help texts and a LUKS2 volume with two users, for ./run.
set -euo pipefail
admin=$1
demo=$2
source=$(cd "$(dirname "$0")" && pwd)

rm -rf "$demo"
mkdir -p "$demo/root/pba/help"
"$admin" settings compile "$source/demo_settings.json" "$demo/root/pba/settings.bin"
for text in "$source"/../help/en/*.txt; do
    # The view reads UTF-16 with CR LF.
    sed 's/$/\r/' "$text" | iconv -f UTF-8 -t UTF-16 >"$demo/root/pba/help/$(basename "$text")"
done
# The view remembers the last user only where this file exists.
: >"$demo/root/pba/last_usr.txt"

# Passwords of a demonstration: whoever runs it reads them on the terminal.
anna='green quill 7'
boris='paper-boat 42'
# The light key derivation keeps the demonstration brisk; a real volume takes the default.
printf '%s\n' "$anna" | "$admin" volume create "$demo/volume.img" --size 64M --user anna \
    --iter-time 500 --password-stdin
printf '%s\n' "$anna" "$boris" | "$admin" user add --volume "$demo/volume.img" --domain OFFICE boris \
    --password-stdin
cat >"$demo/users.txt" <<TXT
The demonstration's users:
  user anna,  no domain,      password $anna
  user boris, domain OFFICE,  password $boris
TXT
touch "$demo/ready"
