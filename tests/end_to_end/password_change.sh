#!/usr/bin/env bash
# password_change.sh BIN: a person logs on by "Password change" and chooses a new password; a second start takes
# the new one and refuses the old.
bin=$1
. "$(dirname "$0")/steps.sh"
old='Paper-boat 42'
new='Paper-ship 43'

type_twice()
{
    type_text "$1"
    xdotool key Tab
    type_text "$2"
    xdotool key Return
}

prepare "$old"
: >"$work/root/pba/last_usr.txt"
start_screen
log_on OFFICE boris "$old" Tab Tab Tab space
wait_for "the page" logged 'pba::QtViewImpl::ShowChangePasswordInternal	END'
type_twice "$new" "$old" # a slip
close_message
xdotool key shift+Tab
type_twice "$new" "$new"
pass_word_about_layouts
expect_end 0
! logged "$old" && ! logged "$new" || fail "A password is in the log."

start_screen
type_text "$old"
xdotool key Return
close_message
type_text "$new"
xdotool key Return
expect_end 0
