#!/usr/bin/env bash
# secrets.sh SCANNER PBA_HOST nothing|something: what is left in the memory of PBA_HOST when it ends of what was
# typed, two passwords of which most is the same, and the user name. "something" is for a program that does not
# wipe: it proves that the scanner is able to find.
scanner=$1
pba_host=$2
expected=$3
bin=$(dirname "$pba_host")
. "$(dirname "$0")/steps.sh"
user=boris
password='Xq7-Zv2 Kw9=Jh4b'
wrong='Xq7-Zv2 Kw8=Jh4b'

masked()
{
    local byte
    for byte in $(printf '%s' "$1" | od -An -v -tu1); do printf '%02x' $((byte ^ 0x5a)); done
}
report=$work/report
run_by=(env -u MALLOC_PERTURB_ "LD_PRELOAD=$scanner" "SCANNER_SECRET=$(masked "$wrong$user")" "SCANNER_REPORT=$report")

prepare "$password"
# A wrong password by automatic logon, from a file; then the right one by hand.
printf '%s\n' "$user" "$wrong" >"$work/root/pba/autolgn.txt"
start_screen --allow-autologon
type_text OFFICE
close_message
enter "$password"
expect_end 0

found=$(grep -c ' in ' "$report") || true
[ "$(tail -n 1 "$report")" = scanned ] || fail "The memory was not scanned."
case $expected in
nothing) [ "$found" -eq 0 ] || fail "Pieces are left: $(sort -k 8 "$report")" ;;
something) [ "$found" -gt 0 ] || fail "The scanner finds nothing where something must be." ;;
esac
