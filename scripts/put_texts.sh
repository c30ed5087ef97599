#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# put_texts.sh BUILD LANGUAGE ROOT: settings, catalogues and help texts of a language, for the demonstration.
set -euo pipefail
build=$1
language=$2
pba=$3/pba
settings=$(dirname "$0")/demo_settings
[ "$language" = en ] || settings+=.$language

mkdir -p "$pba"
rm -rf "$pba/l10n_v" "$pba/l10n_pba" "$pba/help"
cp -R "$build/texts/$language/." "$pba"
"$build/bin/pba_admin" settings compile "$settings.json" "$pba/settings.bin"
