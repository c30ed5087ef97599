#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# update.sh LUPDATE DIR: brings the .ts files in DIR up to date with the texts in the sources. What is new is
# left unfinished, what is gone is dropped.
set -euo pipefail
lupdate=$1
source=$(cd "$(dirname "$0")/.." && pwd)
dir=$(cd "$2" && pwd)

cd "$source"
update() { "$lupdate" -silent -locations none -no-obsolete -source-language en_US -I . "$@"; }
update module translations/toolkit_texts.h -ts "$dir"/l10n_v_*.ts
update host -ts "$dir"/l10n_pba_*.ts
