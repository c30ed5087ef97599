# SPDX-License-Identifier: Apache-2.0
# To be sourced by the scripts beside it, with the programs' directory in `bin`, and in `pba_host` a program in
# place of the one there: the host, as it is installed, in the X server that DISPLAY names, and what a person
# does at its keyboard. Secrets travel through pipes only, and each script names its own to `keep_secret`: when the
# host has ended, none may stand in its log, at the highest severity, and no piece of one in its memory, where
# MEMORY_SCANNER names the library that looks. `preload` names a library of the script's own for the host.
set -euo pipefail
work=$(mktemp -d)
chmod 755 "$work" # the screen runs as nobody, when this is root
host=
preload=
secrets=()
trap '[ -z "$host" ] || kill -KILL "$host" 2>/dev/null || true; rm -rf "$work"' EXIT
log=$work/log
report=$work/report

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
screen() { pgrep -P "$host" -x pba_screen; }
has_focus() { [ "$(xdotool getwindowfocus getwindowpid 2>/dev/null)" = "$(screen)" ]; }
message_has_focus() { has_focus && [ "$(focus)" != "$dialog" ]; }
dialog_has_focus() { [ "$(focus)" = "$dialog" ]; }
type_text() { printf '%s' "$1" | xdotool type --delay 5 --file -; }
enter() { type_text "$1"; xdotool key Return; }
enter_both() { type_text "$1"; xdotool key Tab; enter "$2"; }

# Standard input as the scanner wants it: masked, so that it does not find what it is told.
mask()
{
    local byte
    for byte in $(od -An -v -tu1); do printf '%02x' $((byte ^ 0x5a)); done
    echo
}

keep_secret()
{
    local secret
    for secret in "$@"; do
        secrets+=("$secret")
        printf '%s' "$secret" | mask >>"$work/canaries"
    done
}

start_host()
{
    rm -f "$log" "$report".*
    # What the host freed nobody else may overwrite.
    env -u MALLOC_PERTURB_ LD_PRELOAD="$preload ${MEMORY_SCANNER:-}" SCANNER_REPORT="$report" \
        SCANNER_CANARIES="$work/canaries" "${pba_host:-$bin/pba_host}" \
        --root "$work/root" --volume "$work/volume.img" --log "$log" --log-severity 1000 "$@" \
        >"$work/stdout" 2>"$work/stderr" </dev/null &
    host=$!
}

# Of a key that went into a field, or to the entropy, not even the release is in the log.
expect_secrecy()
{
    local secret program each
    for secret in "${secrets[@]}"; do ! logged "$secret" || fail "A secret is in the log."; done
    ! grep -E '\bkey:(3[3-9]|[4-9][0-9]|1[01][0-9]|12[0-6]),' "$log" >&2 || fail "A character that was typed is in the log."
    [ -n "${MEMORY_SCANNER:-}" ] || return 0
    for program in pba_host pba_screen; do
        ls "$report.$program".* >/dev/null || fail "The memory of $program was not scanned."
    done
    for each in "$report".*; do
        [[ $each != *.pba_token.* ]] || continue # is killed, and has no moment to look
        [ "$(tail -n 1 "$each")" = scanned ] || fail "The memory was not scanned: $each."
        ! grep -H ' in ' "$each" >&2 || fail "Pieces of secrets are left in the memory."
    done
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
    expect_secrecy
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
    keep_secret "$1"
    printf '%s' "$1" | /usr/sbin/cryptsetup luksDump -q --dump-volume-key --volume-key-file "$work/key" --key-file - \
        "$work/volume.img" >/dev/null
    mask <"$work/key" >>"$work/canaries"
}
