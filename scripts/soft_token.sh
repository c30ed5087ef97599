#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# soft_token.sh DIR LABEL PIN [rsa|strict|ec]: adds a token to the SoftHSM in DIR, which is made when it is missing,
# with a key and its certificate; a strict one is of RSA and wants the PIN for each use. To use it:
# SOFTHSM2_CONF=DIR/softhsm2.conf. The PIN is a throw-away one.
set -euo pipefail
dir=$1 label=$2 pin=$3 kind=${4:-rsa}
export SOFTHSM2_CONF=$dir/softhsm2.conf
module=/usr/lib/softhsm/libsofthsm2.so
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir -p "$dir/tokens"
[ -e "$SOFTHSM2_CONF" ] || printf '%s\n' "directories.tokendir = $dir/tokens" 'objectstore.backend = file' \
    'log.level = ERROR' >"$SOFTHSM2_CONF"
softhsm2-util --init-token --free --label "$label" --pin "$pin" --so-pin "$pin" >/dev/null
case $kind in
rsa) options=(-newkey rsa:2048) usage=(--usage-decrypt) ;;
strict) options=(-newkey rsa:2048) usage=(--usage-decrypt --always-auth) ;;
ec) options=(-newkey ec -pkeyopt ec_paramgen_curve:P-256) usage=(--usage-derive) ;;
esac
openssl req -x509 "${options[@]}" -nodes -subj "/CN=token" -days 36500 -keyout "$scratch/key.pem" \
    -outform DER -out "$scratch/certificate" 2>/dev/null
write()
{
    pkcs11-tool --module "$module" --token-label "$label" --login --pin "$pin" --id 01 --write-object "$@" \
        >/dev/null 2>&1
}
write "$scratch/key.pem" --type privkey "${usage[@]}"
write "$scratch/certificate" --type cert
