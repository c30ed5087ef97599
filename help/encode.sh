#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# encode.sh SOURCE OUTPUT: a help text, UTF-8, becomes what the view reads: UTF-16 with CR LF. The last line
# ends without one, for it would show as an empty line.
set -euo pipefail
text=$(<"$1")
mkdir -p "$(dirname "$2")"
printf '%s' "${text//$'\n'/$'\r\n'}" | iconv -f UTF-8 -t UTF-16 >"$2"
