#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# throw_away.sh COMMAND...: runs a command that finds in $SYSTEM this system's files, to be changed and forgotten, and
# in $CHANGES what has been changed of them.
set -euo pipefail
if [ -z "${SYSTEM:-}" ]; then
    SYSTEM=$(mktemp -d)
    export SYSTEM
    trap 'rmdir "$SYSTEM"' EXIT
    unshare --mount "$0" "$@"
    exit
fi
mount -t tmpfs none "$SYSTEM"
mkdir "$SYSTEM/changes" "$SYSTEM/work" "$SYSTEM/system"
mount -t overlay none -o "lowerdir=/,upperdir=$SYSTEM/changes,workdir=$SYSTEM/work" "$SYSTEM/system"
for each in dev proc sys; do
    mount --rbind "/$each" "$SYSTEM/system/$each"
done
export CHANGES=$SYSTEM/changes SYSTEM=$SYSTEM/system
"$@"
