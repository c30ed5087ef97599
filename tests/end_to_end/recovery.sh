#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# recovery.sh BIN READER: a person has forgotten the password, calls the administrator, and sets a new one with keys
# and mouse. The script is both of them. READER tells what stands on the screen.
bin=$1
reader=$2
. "$(dirname "$0")/steps.sh"
. "$(dirname "$0")/shown.sh"
forgotten='Xq7-Zv2 Kw9=Jh4b'
password='Gf5+Tn6 Rd3=Lm1c'
passphrase='correct horse battery'
keep_secret "$password"
machine=demo-laptop # as the settings have it
read_screen "$reader"

recovery() { "$bin/pba_admin" recovery "$@" || fail "pba_admin recovery $1 fails."; }
status_says() { recovery status --volume "$work/volume.img" | grep -qF -- "$1" || fail "The status does not say: $1."; }

prepare "$forgotten"
printf '%s\n' "$passphrase" | recovery keygen --out "$work/keys" --passphrase-stdin >/dev/null
printf '%s\n' "$forgotten" | recovery enroll --volume "$work/volume.img" --admin-key "$work/keys/recovery.pub" \
    --escrow "$work/escrow" --machine "$machine" --password-stdin
status_says 'not used yet'

start_screen
wait_for "the login page" shows 'Forgot your password?'
click_on startPasswordRecoveryButton
close_message # CONTINUE
gather_entropy
former=$challenge
click_on restartRecoveryButton
close_message # RESTART
gather_entropy
[ "$challenge" != "$former" ] || fail "The challenge is the same as before."

shows "$machine" || fail "The computer's name is not on the screen."
answer=$(printf '%s\n' "$passphrase" "$challenge" | recovery respond --key "$work/keys" --escrow "$work/escrow" \
    --machine "$machine" --user Boris --passphrase-stdin)
mapfile -t lines < <(sed 's/^String [12]: //; s/ //g' <<<"$answer")
for line in "${lines[@]}"; do keep_secret "$line" "${line,,}" "$(sed 's/..../&./g' <<<"$line")"; done
xdotool key Return
wait_for "the third step" shows 'Step 3: Response'
type_text "${lines[1]}" # the second line first
wait_for "a rejected line" shows 'Rejected'
xdotool key ctrl+a
type_text "${lines[0],,}"
wait_for "the second line" shows 'String 2:'
type_text "${lines[1]}"
wait_for "the accepted response" shows 'Response is accepted'
xdotool key Return
wait_for "the new password's page" shows 'Domain: OFFICE, User: boris'
! shows Cancel || fail "The new password may be declined."
enter_both "$password" "$password"
pass_word_about_layouts
expect_end 0
status_says 'used; renew it'
