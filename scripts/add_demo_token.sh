#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# add_demo_token.sh PBA_ADMIN DIR: gives the demonstration in DIR a token made of software, for ./run --token, and a
# volume of its own: in the other one the password may have been changed.
set -euo pipefail
admin=$1
token=$2/token
# The demonstration's, like its passwords: whoever runs it reads it on the terminal.
pin=2468

rm -rf "$token"
"$(dirname "$0")/soft_token.sh" "$token" 'Demo card' "$pin"
cp --sparse=always "$2/fresh.img" "$token/volume.img"
password=$(sed -n 's/.*user anna,.*password //p' "$2/users.txt")
printf '%s\n' "$password" "$pin" | SOFTHSM2_CONF=$token/softhsm2.conf "$admin" token add --user anna \
    --volume "$token/volume.img" --token 'pkcs11:token=Demo%20card' \
    --pkcs11-module /usr/lib/softhsm/libsofthsm2.so --password-stdin
echo "  token \"Demo card\" of user anna, PIN $pin" >"$token/pin.txt"
