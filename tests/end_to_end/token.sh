#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# token.sh BIN PROXY: a person logs on with a token that comes and goes. The card service tells that a
# card came or went; what it is, is for the proxy before SoftHSM to say.
bin=$1
proxy=$2
. "$(dirname "$0")/steps.sh"
password='Xq7-Zv2 Kw9=Jh4b'
pin=83254617-Xq7Zv2Kw9Jh4b
keep_secret "$pin" "${pin/8/9}"
service=
card=
trap 'kill $service $card $host 2>/dev/null || true; rm -rf "$work"' EXIT

export SOFTHSM2_CONF=$work/tokens/softhsm2.conf TOKEN_PROXY=$work/control
start_service() { pcscd --foreground >"$work/pcscd" 2>&1 & service=$!; }
insert() { : >"$TOKEN_PROXY"; "$(dirname "$0")/../support/virtual_card.sh" & card=$!; }
remove() { echo 'hide Anna' >"$TOKEN_PROXY"; kill "$card"; wait "$card" || true; card=; }
times() { [ "$(grep -cF -- "$2" "$log")" -eq "$1" ]; }
token_pages() { times "$1" $'pba::QtViewImpl::ShowLoginByTokenScreen\tEND: 0x00000000'; }
password_pages() { times "$1" $'pba::QtViewImpl::ShowLoginByPasswordScreen\tEND: 0x00000000'; }
# What the token decrypts, and the passphrase that is made of it; for the scanner alone, since no foreign tool loads
# a proxy with sanitizers in it.
keep_passphrase()
{
    /usr/sbin/cryptsetup luksDump --dump-json-metadata "$work/volume.img" \
        | sed -n 's/.*"pkcs11-key": *"\([^"]*\)".*/\1/p' | base64 -d >"$work/encrypted"
    pkcs11-tool --module "$proxy" --token-label Anna --login --pin "$pin" --id 01 --decrypt \
        --mechanism RSA-PKCS --input-file "$work/encrypted" --output-file "$work/key" 2>/dev/null
    mask <"$work/key" >>"$work/canaries"
    base64 -w 0 "$work/key" | mask >>"$work/canaries"
    rm -f "$TOKEN_PROXY.log"
}

prepare "$password"
: >"$TOKEN_PROXY"
"$(dirname "$0")/../../scripts/soft_token.sh" "$work/tokens" Anna "$pin"
# When root starts the host, its module runs as another user.
cp "$proxy" "$work/module.so"
proxy=$work/module.so
chmod a+x "$work"
chmod -R a+rwX "$work/tokens"
printf '%s\n' "$password" "$pin" | "$bin/pba_admin" token add --volume "$work/volume.img" --user anna \
    --token pkcs11:token=Anna --pkcs11-module "$proxy" --password-stdin
[ -z "${MEMORY_SCANNER:-}" ] || keep_passphrase
echo 'hide Anna' >"$TOKEN_PROXY"

# The token appears, with a service that starts late, and disappears while its PIN is half typed.
start_screen --pkcs11-module "$proxy"
wait_for "the password page" password_pages 1
start_service
insert
wait_for "the token's page" token_pages 1
type_text "${pin:0:9}"
remove
wait_for "the password page again" password_pages 2
insert
wait_for "the token's page again" token_pages 2

enter "${pin/8/9}"
close_message
logged 'Login by token refused: wrong PIN' || fail "The token has not refused the PIN."

# The service dies, takes the card along and comes back.
echo 'hide Anna' >"$TOKEN_PROXY"
kill -KILL "$service"
wait "$service" "$card" || true
wait_for "the password page without the service" password_pages 3
start_service
insert
wait_for "the token's page with the service" token_pages 3
enter "$pin"
expect_end 0

# A token that is there from the beginning.
start_screen --pkcs11-module "$proxy"
wait_for "the token's page" token_pages 1
enter "$pin"
expect_end 0
