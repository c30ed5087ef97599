#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# secrets.sh BIN [PBA_HOST PBA_SCREEN]: a wrong password by automatic logon, from a file, before the right one by
# hand. The two programs do not wipe, and then something must be left in each: it proves that the scanner is able to
# find.
bin=$1
. "$(dirname "$0")/steps.sh"
user=boris
password='Xq7-Zv2 Kw9=Jh4b'
wrong='Xq7-Zv2 Kw8=Jh4b'
keep_secret "$wrong" "$user"

prepare "$password"
if [ $# -gt 1 ]; then
    mkdir "$work/bin"
    cp "$bin"/lib*.so* "$work/bin"
    cp "$2" "$work/bin/pba_host"
    cp "$3" "$work/bin/pba_screen"
    pba_host=$work/bin/pba_host
    expect_secrecy()
    {
        local each
        for each in "$report".*; do grep -q ' in ' "$each" || fail "The scanner finds nothing: $each."; done
    }
fi
printf '%s\n' "$user" "$wrong" >"$work/root/pba/autolgn.txt"
start_screen --allow-autologon
type_text OFFICE
close_message
enter "$password"
expect_end 0
