#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Runs a command in an X server of its own, which takes its number itself: tests may run side by side.
# -noreset, since the server would otherwise start over whenever its last client leaves.
set -eu
dir=$(mktemp -d)
mkfifo "$dir/number"
Xvfb -displayfd 3 -screen 0 1024x768x24 -noreset -nolisten tcp 3>"$dir/number" 2>/dev/null &
server=$!
trap 'kill "$server" 2>/dev/null || true; rm -rf "$dir"' EXIT
read -r number <"$dir/number"
DISPLAY=":$number" "$@"
