#!/usr/bin/env bash
# include_rules.sh ROOT: names each #include below ROOT that breaks the order of the layers; there may be none.
set -euo pipefail
cd "$1"

# What a directory, or a single file in it, may include of the project's headers and of the toolkit (Q).
# "./" stands for a header beside the file. Headers of the system and of other libraries are free.
declare -A may=(
    [include/kro]='kro/'
    [include/pba]='(kro|pba)/'
    [include/pbe]='(kro|pbe)/'
    [src/trace]='(trace|kro|pbe)/|Q'
    [src/settings]='(settings|trace|kro|pbe)/|Q'
    # Shared with the administrator's tool, which is free of the toolkit.
    [src/settings/settings_record.h]='kro/'
    [src/settings/settings_decoder.h]='(settings/settings_record.h|kro/)'
    [src/settings/settings_decoder.cpp]='settings/settings_decoder.h'
    [src/settings/hotkey_predicates.h]='(settings/settings_record.h|kro/)'
    # The dialogs' forms and the style sheet lie below the widgets, the main window's form above them.
    [src/forms]='forms/|Q'
    [src/forms/pba_main_window.ui]='widgets/'
    # The response input asks the recovery's logic.
    [src/widgets]='(widgets|settings|trace|kro|pbe)/|Q|forms/(style|ui_pba_message_box|ui_lock_ui_dialog).h|pba/password_recovery.h'
    [src/views]='(views|widgets|settings|trace|kro|pba|pbe)/|Q|forms/(style|ui_pba_main_window).h'
    [platform]='\./|(layouts|kro|pbe)/|Q'
    # Shared with the administrator's tool, which is free of the toolkit.
    [platform/layouts]='layouts/'
    # The host knows how the settings are written, and nothing else of the view.
    [host]='\./|(recovery|token|volume|kro|pba|pbe)/|settings/settings_(record|decoder).h'
    [host/volume]='\./'
    [host/recovery]='\./|volume/'
    [host/token]='\./|volume/'
    [admin]='\./|(recovery|token|volume|layouts)/|kro/|settings/(settings_record|settings_decoder|hotkey_predicates).h'
)
ours='^(\./|\.\./|kro/|pba/|pbe/|layouts/|trace/|settings/|widgets/|forms/|views/|volume/|recovery/|token/|[Qq][A-Za-z])'

lines=$(grep -rE '^\s*#\s*include|<header>' --include='*.h' --include='*.cpp' --include='*.ui' \
    include src platform host admin | sed -nE 's/^([^:]+):\s*(#\s*include\s*|<header>)(["<]?)([^">]+).*/\1 \3\4/p')
faults=0
fault() { printf '%s\n' "$1"; faults=$((faults + 1)); }

while read -r file header; do
    name=${header#[\"<]} directory=${file%/*}
    [[ $name == */* || ! -e $directory/$name ]] || name=./$name
    [[ $header != '<'* || $name =~ $ours ]] || continue
    rule=${may[$file]-${may[$directory]-}}
    [[ -n $rule && $name =~ ^($rule) ]] || fault "$file may not include $name"
done <<<"$lines"

# A host can be written without the toolkit.
for file in include/*/*.h; do
    case $file in include/pbe/screen.h | include/pbe/mouse_notifier.h) continue ;; esac
    ! sed 's,//.*,,' "$file" | grep -qE '\bQ([A-Z]|t)' || fault "$file names a type of the toolkit"
done
[ "$faults" -eq 0 ]
