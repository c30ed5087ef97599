#!/usr/bin/env bash
# end_to_end.sh BIN: a person logs on at the keyboard. The programs run as they are installed, on a real LUKS2
# volume and in the X server that DISPLAY names; secrets travel through pipes only.
set -euo pipefail
bin=$1
work=$(mktemp -d)
host=
trap '[ -z "$host" ] || kill -KILL "$host" 2>/dev/null || true; rm -rf "$work"' EXIT
password='Paper-boat 42'
wrong='paper-boat 42'
log=$work/log

fail()
{
    printf '%s\n' "$1" "-- log" "$(tail -n 40 "$log" 2>&1)" "-- errors" "$(cat "$work/stderr")" >&2
    exit 1
}

wait_for()
{
    local what=$1 round
    shift
    for ((round = 0; round < 600; round++)); do
        "$@" && return
        sleep 0.05
    done
    fail "In vain waited for: $what."
}

logged() { grep -qF -- "$1" "$log" 2>/dev/null; }
ended() { ! kill -0 "$host" 2>/dev/null; }
focus() { xdotool getwindowfocus 2>/dev/null; }
has_focus() { [ "$(xdotool getwindowfocus getwindowpid 2>/dev/null)" = "$host" ]; }
message_has_focus() { has_focus && [ "$(focus)" != "$dialog" ]; }
dialog_has_focus() { [ "$(focus)" = "$dialog" ]; }
type_text() { printf '%s' "$1" | xdotool type --delay 5 --file -; }
utf16() { printf '\xff\xfe' && printf '%s' "$1" | iconv -f UTF-8 -t UTF-16LE; }
holds() { cmp -s <(utf16 "$2") "$work/root/pba/$1" || fail "$1 does not hold $2: $(od -c "$work/root/pba/$1")"; }

start_host()
{
    rm -f "$log"
    "$bin/pba_host" --root "$work/root" --volume "$work/volume.img" --log "$log" --log-severity 700 "$@" \
        >"$work/stdout" 2>"$work/stderr" </dev/null &
    host=$!
}

# Up to the first page, ready for keys.
start_screen()
{
    start_host "$@"
    wait_for "the first page" logged $'pba::QtViewImpl::InitBusinessLogic\tEND: 0x00000000'
    wait_for "the keyboard focus" has_focus
    dialog=$(focus)
}

expect_end()
{
    local code=0
    wait_for "the end of pba_host" ended
    wait "$host" || code=$?
    host=
    [ "$code" -eq "$1" ] || fail "pba_host ended with $code instead of $1."
    [ ! -s "$work/stdout" ] || fail "pba_host wrote to standard output."
}

mkdir -p "$work/root/pba"
: >"$work/root/pba/last_usr.txt"
: >"$work/stderr"
"$bin/pba_admin" settings compile "$(dirname "$0")/../../scripts/demo_settings.json" "$work/root/pba/settings.bin"
printf '%s\n' "$password" | "$bin/pba_admin" volume create "$work/volume.img" --size 20M \
    --domain OFFICE --user boris --iter-time 10 --password-stdin

# The first login: the domain has the focus, and a wrong password comes before the right one.
start_screen
type_text OFFICE
xdotool key Tab
type_text boris
xdotool key Tab
type_text "$wrong"
xdotool key Return
wait_for "the message" message_has_focus
logged 'Login refused' || fail "The host has not refused the password."
xdotool key Return
wait_for "the login page" dialog_has_focus
wait_for "the end of the first attempt" logged $'pba::QtViewImpl::OnLogin\tEND: 0x00000000'
# What was typed is selected: the right password takes its place.
type_text "$password"
xdotool key Return
expect_end 0
holds last_dmn.txt OFFICE
holds last_usr.txt boris
head -n 1 "$log" | grep -qE 'MODULE_VERSION_INFO \{pba_view, Quillmark, version: [0-9.]+\}' \
    || fail "The log does not begin with the version record."
[ "$(grep -cE $'pba::QtViewImpl::OnLogin\t(BEGIN|END: 0x00000000)' "$log")" -eq 4 ] \
    || fail "The log does not hold two logins."
! logged "$password" && ! logged "$wrong" || fail "A password is in the log."

# Domain and user are remembered: the password is all that is missing.
start_screen
type_text "$password"
xdotool key Return
expect_end 0

# A signal ends the view, a message in front or not.
start_screen
xdotool key Return
wait_for "the message" message_has_focus
kill -TERM "$host"
expect_end 3

start_screen --test-boot
xdotool key space
expect_end 4

for unusable in "--volume $work/none" "--module $work/none.so"; do
    start_host $unusable
    expect_end 2
    [ "$(wc -l <"$work/stderr")" -eq 1 ] || fail "Not one line of errors for $unusable."
done
