#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# secrets.sh PBA_HOST: a wrong password by automatic logon, from a file, before the right one by hand. With a second
# argument PBA_HOST does not wipe, and something must be left: it proves that the scanner is able to find.
pba_host=$1
unwiped=${2:-}
bin=$(dirname "$pba_host")
. "$(dirname "$0")/steps.sh"
user=boris
password='Xq7-Zv2 Kw9=Jh4b'
wrong='Xq7-Zv2 Kw8=Jh4b'
keep_secret "$wrong" "$user"
[ -z "$unwiped" ] || expect_secrecy() { grep -q ' in ' "$report" || fail "The scanner finds nothing."; }

prepare "$password"
printf '%s\n' "$user" "$wrong" >"$work/root/pba/autolgn.txt"
start_screen --allow-autologon
type_text OFFICE
close_message
enter "$password"
expect_end 0
