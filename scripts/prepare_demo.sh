#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# prepare_demo.sh PBA_ADMIN DIR: a root directory and a LUKS2 volume with two users, for ./run.
set -euo pipefail
admin=$1
demo=$2

rm -rf "$demo"
mkdir -p "$demo/root/pba"
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
passphrase='correct horse battery'
printf '%s\n' "$passphrase" | "$admin" recovery keygen --out "$demo/keys" --passphrase-stdin >/dev/null
printf '%s\n' "$anna" | "$admin" recovery enroll --volume "$demo/volume.img" --admin-key "$demo/keys/recovery.pub" \
    --escrow "$demo/escrow" --machine demo-laptop --password-stdin
cat >"$demo/users.txt" <<TXT
The demonstration's users, until you change their passwords; ./run --clean prepares them anew:
  user anna,  no domain,      password $anna
  user boris, domain OFFICE,  password $boris
Should one of them forget it, answer the challenge on the screen with
  $admin recovery respond --key $demo/keys --escrow $demo/escrow --machine demo-laptop --user anna
and the passphrase $passphrase
TXT
# What the demonstration with a token begins with, and the sign that all is prepared.
cp --sparse=always "$demo/volume.img" "$demo/fresh.part"
mv "$demo/fresh.part" "$demo/fresh.img"
