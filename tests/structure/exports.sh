#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# exports.sh MODULE: the module shows its host the four functions of the contract and nothing else.
set -eu
expected='CreateMainView T
CreateTranslator T
DeleteMainView T
DeleteTranslator T'
actual=$(nm --dynamic --defined-only --format=posix "$1" | cut -d' ' -f1,2 | LC_ALL=C sort)
[ "$actual" = "$expected" ] || { printf '%s exports:\n%s\n' "$1" "$actual"; exit 1; }
