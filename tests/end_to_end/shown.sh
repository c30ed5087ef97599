# SPDX-License-Identifier: Apache-2.0
# To be sourced after steps.sh by scripts that need to know what stands on the screen.

# read_screen READER: the library that tells it, before the host starts.
read_screen()
{
    shown=$work/shown
    preload=$1
    export SCREEN_READER_REPORT=$shown
}

seen() { flock -s "$shown" cat "$shown" 2>/dev/null; }
shows() { seen | cut -f 4 | grep -F -- "$1" >/dev/null; }

click_on()
{
    local place
    place=$(seen | awk -F '\t' -v name="$1" '$1 == name { print $2, $3 }')
    [ -n "$place" ] || fail "There is no $1 on the screen: $(seen)"
    xdotool mousemove $place click 1
}

# Up to the challenge, which is left in `challenge`, a string a line.
gather_entropy()
{
    local i moves=()
    for ((i = 0; i < 100; i++)); do moves+=(mousemove $((100 + i * 7)) $((700 - i * 5))); done
    wait_for "the first step" shows 'Step 1: Entropy'
    # The keys first: none is still on its way when the second step shows.
    xdotool key a s d f g h j k l q
    for ((i = 0; i < 100; i++)); do
        ! shows 'Step 2: Challenge' || break
        xdotool "${moves[@]}"
    done
    wait_for "the second step" shows 'Step 2: Challenge'
    sleep 0.6 # keys that follow at once count as hammered on
    challenge=$(seen | sort -t $'\t' -n -k 3 | cut -f 4 | grep -xE '([0-9A-Z]{4} ?){4}') || fail "There is no challenge on the screen."
}
