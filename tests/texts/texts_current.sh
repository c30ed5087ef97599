#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# texts_current.sh LUPDATE: the translations hold every text of the sources, no other, and each is translated.
set -euo pipefail
translations=$(cd "$(dirname "$0")/../../translations" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cp "$translations"/*.ts "$work"
"$translations/update.sh" "$1" "$work"
diff -r -x '[!l]*' "$translations" "$work" || {
    echo "The translations are out of date: build the target update_texts and translate what is unfinished."
    exit 1
}
! grep -n 'type="unfinished"' "$work"/*.ts
