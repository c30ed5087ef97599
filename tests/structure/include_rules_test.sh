#!/usr/bin/env bash
# The check of the include rules finds what it is there for: one planted line at a time.
set -euo pipefail
check=$(cd "$(dirname "$0")" && pwd)/include_rules.sh
tree=$(mktemp -d)
trap 'rm -r "$tree"' EXIT
cd "$tree"
mkdir -p include/{kro,pba,pbe} src/{trace,settings,forms,widgets,views} platform host/volume admin
printf '#include <vector>\n' | tee include/pbe/log.h host/log.h host/volume/volume.h >src/trace/trace.h
printf '#include "log.h"\n#include "volume/volume.h"\n#include "pba/view.h"\n' >host/main.cpp
"$check" . || { echo "Lines without fault are refused."; exit 1; }

while read -r file line; do
    printf '%s\n' "$line" >"$file"
    report=$("$check" .) && { echo "$file: $line is not found"; exit 1; }
    [[ $report == "$file "* && $report != *$'\n'* ]] || { echo "$file: $line gives: $report"; exit 1; }
    rm "$file"
done <<'LINES'
src/trace/a.cpp #include "settings/settings.h"
src/settings/a.cpp #include "widgets/pba_line_edit.h"
src/settings/settings_record.h #include <QString>
src/forms/pba_message_box.ui <header>widgets/pba_line_edit.h</header>
src/widgets/a.cpp #include "views/qt_view_impl.h"
src/widgets/a.cpp #include "ui_pba_main_window.h"
src/widgets/a.cpp #include "pba/view.h"
src/views/a.cpp #include "../host/log.h"
include/kro/a.h #include "pbe/log.h"
include/pba/a.h #include <pbe/log.h>
include/pbe/a.h class QWidget;
platform/a.cpp #include "trace/trace.h"
platform/a.cpp #include "pba/view.h"
host/a.cpp #include "trace/trace.h"
host/a.cpp #  include <QString>
host/volume/a.cpp #include "../log.h"
admin/a.cpp #include "settings/settings.h"
admin/a.cpp #include "pba/view.h"
LINES
