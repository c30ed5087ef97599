#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# card_service.sh COMMAND...: runs a command that starts the real card service with a virtual reader, in namespaces
# of its own, so that the computer's own service is left alone. Skipped (77) where that cannot be had.
set -euo pipefail
if [ "${CARD_SERVICE_INSIDE:-}" != yes ]; then
    ls /usr/lib/pcsc/drivers/serial/libifdvpcd.so* >/dev/null 2>&1 || { echo "no virtual reader"; exit 77; }
    unshare --mount --net true 2>/dev/null || { echo "namespaces are not allowed"; exit 77; }
    CARD_SERVICE_INSIDE=yes exec unshare --mount --net "$0" "$@"
fi
ip link set lo up
mkdir -p /run/pcscd
mount -t tmpfs none /run/pcscd
exec "$@"
