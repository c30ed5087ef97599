#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# kill_table.sh BIN READER: kills the screen, and then the service, on each page and while a password is checked, and
# prints what the person is left with. Inside an X server: tests/support/under_xvfb.sh tools/kill_table/kill_table.sh ...
# READER is build/gcc/bin/libscreen_reader.so.
bin=$1
steps=$(dirname "$0")/../../tests/end_to_end
. "$steps/steps.sh"
. "$steps/shown.sh"
password='Xq7-Zv2 Kw9=Jh4b'
read_screen "$2"
pages=(login change_password recovery_entropy recovery_challenge recovery_response test_boot)

prepare "$password"
: >"$work/root/pba/last_usr.txt"
# Its derivation takes seconds.
printf '%s\n' "$password" | "$bin/pba_admin" volume create "$work/slow.img" --size 20M --domain OFFICE --user boris \
    --iter-time 3000 --password-stdin
printf '%s\n' 'correct horse' | "$bin/pba_admin" recovery keygen --out "$work/keys" --passphrase-stdin >/dev/null
printf '%s\n' "$password" | "$bin/pba_admin" recovery enroll --volume "$work/volume.img" --machine here \
    --admin-key "$work/keys/recovery.pub" --escrow "$work/escrow" --password-stdin

current_page() { echo "${pages[$(sed -n 's/.*Screen index: \([0-9]*\).*/\1/p' "$log" | tail -n 1)]}"; }
on_page() { [ "$(current_page)" = "$1" ]; }
first_pages() { grep -cF $'pba::QtViewImpl::InitBusinessLogic\tEND: 0x00000000' "$log"; }
first_page_again() { [ "$(first_pages)" -eq 2 ]; }
screen_ended() { ! kill -0 "$1" 2>/dev/null; }

reach()
{
    case $1 in
    login | test_boot) ;;
    message)
        log_on OFFICE boris 'no'
        wait_for "the message" message_has_focus
        ;;
    change_password)
        type_text OFFICE
        xdotool key Tab
        type_text boris
        xdotool key Tab
        type_text "$password"
        click_on changePasswordButton
        ;;
    recovery_*)
        wait_for "the page" shows 'Forgot your password?'
        click_on startPasswordRecoveryButton
        close_message
        [ "$1" = recovery_entropy ] || gather_entropy
        [ "$1" != recovery_response ] || xdotool key Return
        ;;
    derivation)
        log_on OFFICE boris "$password"
        wait_for "the derivation" logged $'pba::QtViewImpl::OnLogin\tBEGIN'
        sleep 1
        ;;
    esac
    case $1 in message | derivation) ;; *) wait_for "the page" on_page "$1" ;; esac
}

# After the screen: which page comes, and whether one can still log on there.
kill_screen()
{
    kill -KILL "$(screen)"
    wait_for "the next screen" first_page_again
    wait_for "its focus" has_focus
    dialog=$(focus)
    said="a new screen: $(current_page)"
    if [ "$1" = test_boot ]; then
        xdotool key Return
    else
        sleep 1 # until the reader tells of this one
        log_on_anew
    fi
    wait_for "the end of pba_host" ended
    wait "$host" && code=0 || code=$?
}

kill_service()
{
    local pid
    pid=$(screen)
    kill -KILL "$host"
    wait "$host" && code=0 || code=$?
    wait_for "the end of the screen" screen_ended "$pid"
    said="nothing remains: the screen has ended by itself"
}

# After an attempt the names are there already.
log_on_anew()
{
    if seen | grep '^changeDomainButton' >/dev/null; then
        said+=", names remembered"
        enter "$password"
    else
        log_on OFFICE boris "$password"
    fi
}

printf '%-18s %-8s %-4s %s\n' page killed code 'what the person is left with'
for page in "${pages[@]}" message derivation; do
    for victim in screen service; do
        options=()
        [ "$page" != test_boot ] || options=(--test-boot)
        [ "$page" != derivation ] || options=(--volume "$work/slow.img")
        rm -f "$work/root/pba/last_dmn.txt" "$work/root/pba/state.json"
        : >"$work/root/pba/last_usr.txt"
        start_screen "${options[@]}"
        reach "$page"
        "kill_$victim" "$page"
        host=
        printf '%-18s %-8s %-4s %s\n' "$page" "$victim" "$code" "$said"
    done
done
