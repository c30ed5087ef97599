# To be sourced by the scripts beside it, with the programs' directory in `bin`, and in `pba_host` a program in
# place of the one there: the host, as it is installed, in the X server that DISPLAY names, and what a person
# does at its keyboard. Secrets travel through pipes only.
set -euo pipefail
work=$(mktemp -d)
host=
run_by=() # a program and its arguments that pba_host is started by
trap '[ -z "$host" ] || kill -KILL "$host" 2>/dev/null || true; rm -rf "$work"' EXIT
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
enter() { type_text "$1"; xdotool key Return; }
enter_both() { type_text "$1"; xdotool key Tab; enter "$2"; }

start_host()
{
    rm -f "$log"
    "${run_by[@]}" "${pba_host:-$bin/pba_host}" --root "$work/root" --volume "$work/volume.img" \
        --log "$log" --log-severity 700 "$@" >"$work/stdout" 2>"$work/stderr" </dev/null &
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

# Types a domain, a user name and a password on the login page and hands them over.
log_on()
{
    type_text "$1"
    xdotool key Tab
    enter_both "$2" "$3"
}

# Closes the message that is up or comes up.
close_message()
{
    wait_for "the message" message_has_focus
    xdotool key Return
    wait_for "the page behind the message" dialog_has_focus
}

# One of the configured layouts has other letters: a new password of ours cannot be typed by it.
pass_word_about_layouts()
{
    wait_for "the word about keyboard layouts" message_has_focus
    xdotool key Return
}

# A volume whose one user, boris of OFFICE, has the given password.
prepare()
{
    mkdir -p "$work/root/pba"
    : >"$work/stderr"
    "$bin/pba_admin" settings compile "$(dirname "$0")/../../scripts/demo_settings.json" \
        "$work/root/pba/settings.bin"
    printf '%s\n' "$1" | "$bin/pba_admin" volume create "$work/volume.img" --size 20M \
        --domain OFFICE --user boris --iter-time 10 --password-stdin
}
