#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# include_rules.sh ROOT: names each #include below ROOT that breaks the order of the layers; there may be none.
set -euo pipefail
cd "$1"

# What a directory, or a single file in it, may include of the project's headers, written from its root, and of
# the toolkit (Q). Headers of the system and of other libraries are free.
declare -A may=(
    [include/kro]='kro/'
    [include/pba]='(kro|pba)/'
    [include/pbe]='(kro|pbe)/'
    [base]='base/'
    [settings_format]='settings_format/|kro/'
    [module/trace]='module/trace/|(kro|pbe)/|Q'
    [module/settings]='module/(settings|trace)/|settings_format/|(kro|pbe)/|Q'
    # The dialogs' forms and the style sheet lie below the widgets, the main window's form above them.
    [module/forms]='module/forms/|Q'
    [module/forms/pba_main_window.ui]='module/widgets/'
    # The response input asks the recovery's logic.
    [module/widgets]='module/(widgets|settings|trace)/|settings_format/|(kro|pbe)/|Q|module/forms/(style|ui_pba_message_box|ui_lock_ui_dialog).h|pba/password_recovery.h'
    [module/views]='module/(views|widgets|settings|trace)/|settings_format/|(kro|pba|pbe)/|Q|module/forms/(style|ui_pba_main_window).h'
    [platform]='platform/|(kro|pbe)/|Q'
    # Linked by hosts without the toolkit as well. Of what lies below, the one way to write UTF-8, which needs no
    # library of others: a second one here would name other files.
    [platform/counter.cpp]='pbe/'
    [platform/files.cpp]='base/utf.h|(kro|pbe)/'
    [platform/log.cpp]='(kro|pbe)/'
    [platform/input]='platform/|(kro|pbe)/|Q'
    [platform/screen]='platform/|(kro|pbe)/|Q'
    [platform/devices]='platform/|(kro|pbe)/|Q'
    # Shared with the administrator's tool, which is free of the toolkit.
    [platform/layouts]='platform/layouts/'
    [volume]='(base|volume)/'
    [volume/luks]='(base|volume/luks)/'
    [volume/recovery]='(base|volume/(luks|recovery))/'
    [volume/token]='(base|volume/(luks|token))/'
    [host]='host/|pbe/'
    [host/protocol]='(base|host/protocol)/'
    # The screen knows how the settings are written, and nothing else of the view; of the volume it knows nothing.
    [host/screen]='(base|host/protocol|host/screen|settings_format)/|host/log.h|(kro|pba|pbe)/'
    [host/text]='(base|host/protocol|host/text)/|host/screen/(catalogue|confinement|error_messages|exit_codes|options|prompts|texts).h'
    [host/service]='(base|host/protocol|host/service|volume)/|host/log.h|host/screen/(identity|exit_codes).h|host/token_process/wire.h|(kro|pba|pbe)/'
    [host/service/tokens]='(base|host/protocol|host/service|volume/token)/|host/log.h|host/screen/exit_codes.h|host/token_process/wire.h'
    # Its walls are of the same kind as a screen's.
    [host/token_process]='(base|host/protocol|host/token_process|volume/token)/|host/screen/(confinement|exit_codes|system_calls).h'
    [admin]='(admin|base|settings_format|volume|platform/layouts)/|kro/'
)
ours='^((admin|base|host|kro|module|pba|pbe|platform|settings_format|volume)/|[Qq][A-Za-z])'

lines=$(grep -rE '^\s*#\s*include|<header>' --include='*.h' --include='*.cpp' --include='*.ui' \
    include base settings_format module platform volume host admin |
    sed -nE 's/^([^:]+):\s*(#\s*include\s*|<header>)(["<]?)([^">]+).*/\1 \3\4/p')
faults=0
fault() { printf '%s\n' "$1"; faults=$((faults + 1)); }

while read -r file header; do
    name=${header#[\"<]} directory=${file%/*}
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
