#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# end_to_end.sh BIN EXEC_COUNTER: a person logs on at the keyboard, and chooses a new password.
bin=$1
. "$(dirname "$0")/steps.sh"
password='Xq7-Zv2 Kw9=Jh4b'
wrong='Xq7-Zv2 Kw8=Jh4b'
new='Gf5+Tn6 Rd3=Lm1c'
keep_secret "$wrong" "$new"

prepare "$password"
: >"$work/root/pba/last_usr.txt"

# The first login: the domain has the focus, and a wrong password comes before the right one. No program is started.
unset DBUS_SESSION_BUS_ADDRESS
preload=$2
export EXEC_COUNTER_REPORT=$work/programs
start_screen
log_on OFFICE boris "$wrong"
close_message
logged 'Login refused' || fail "The host has not refused the password."
wait_for "the end of the first attempt" logged $'pba::QtViewImpl::OnLogin\tEND: 0x00000000'
# What was typed is selected: the right password takes its place.
enter "$password"
expect_end 0
preload=
[ "$(cat "$work/programs")" = watched ] || fail "Programs were started: $(cat "$work/programs")"
head -n 1 "$log" | grep -qE 'MODULE_VERSION_INFO \{pba_view, Quillmark, version: 3\.0\.1\.92\}' \
    || fail "The log does not begin with the version record."
[ "$(grep -cE $'pba::QtViewImpl::OnLogin\t(BEGIN|END: 0x00000000)' "$log")" -eq 4 ] \
    || fail "The log does not hold two logins."

# Domain and user are remembered: the password is all that is missing. By "Password change" to a new one.
start_screen
type_text "$password"
xdotool key Tab Tab Tab space
wait_for "the page" logged $'pba::QtViewImpl::ShowChangePasswordInternal\tEND'
enter_both "$new" "$password" # a slip
close_message
xdotool key shift+Tab
enter_both "$new" "$new"
pass_word_about_layouts
expect_end 0

start_screen
enter "$password"
close_message
enter "$new"
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
