#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# life.sh DIR [--thorough]: the packages of DIR/first in $SYSTEM, from their installation to their purge, with those of
# DIR/next as an upgrade.
set -euo pipefail
packages=$1
thorough=${2:-}
home=/tmp/pba_packages
umask 022
mkdir -p "$SYSTEM$home/root/pba"
cp "$packages"/first/*.deb "$packages"/next/*.deb "$SYSTEM$home"
rm "$SYSTEM$home"/*-dbgsym_*
fail() { printf '%s\n' "$@" >&2; exit 1; }
inside() { env -i PATH="$PATH" HOME="$home" LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive chroot "$SYSTEM" "$@"; }
quietly() { "$@" >"$packages/log" 2>&1 || { cat "$packages/log" >&2; fail "Failed: $*"; }; }

# install VERSION [PACKAGE...]: all of them when none is named. Nothing is downloaded.
install()
{
    local version=$1 each files=()
    shift
    for each in "${@:-*}"; do
        files+=("$SYSTEM$home"/${each}_"$version"_*.deb)
    done
    inside apt-get install -y -q --no-install-recommends -o Dir::Etc::sourcelist=/dev/null \
        -o Dir::Etc::sourceparts=/dev/null "${files[@]#"$SYSTEM"}"
}

# answer PROMPT LINE: at the terminal.
answer()
{
    local shown= next
    while IFS= read -r -N 1 -t 120 -u "${TERMINAL[0]}" next; do
        shown+=$next
        [[ $shown != *"$1"* ]] || { printf '%s\r' "$2" >&"${TERMINAL[1]}"; return; }
    done
    fail "The terminal does not show \"$1\", but:" "$shown"
}

log_on_at_terminal()
{
    local code=0
    coproc TERMINAL { inside script --quiet --return --command \
        "pba_host --text --root $home/root --volume $home/volume" /dev/null; }
    local terminal=$TERMINAL_PID
    answer 'User name' anna
    answer 'Domain' ''
    answer 'Password' 'green quill 7'
    wait "$terminal" || code=$?
    [ "$code" -eq 0 ] || fail "The login at a terminal ended with $code."
}

# Nobody types here: the view logs on by its file.
log_on_at_screen()
{
    quietly inside env QT_QPA_PLATFORM=offscreen pba_host --root "$home/root" --volume "$home/volume" --allow-autologon
}

use()
{
    inside rm -rf "$home/root/pba" "$home/volume"
    inside cp -R /usr/share/pba/texts/en "$home/root/pba"
    quietly inside pba_admin settings compile /usr/share/pba/settings/en.json "$home/root/pba/settings.bin"
    quietly inside pba_admin volume create "$home/volume" --size 20M --user anna --iter-time 10 --password-stdin \
        <<<'green quill 7'
    quietly inside pba_admin policy set --volume "$home/volume" --autologon yes
    log_on_at_terminal
    printf 'anna\ngreen quill 7\n' >"$SYSTEM$home/root/pba/autolgn.txt"
    log_on_at_screen
}

build_host()
{
    quietly inside cmake -S /usr/share/doc/libpba-view-dev/examples/example_host -B "$home/example" -G Ninja
    quietly inside cmake --build "$home/example"
    quietly inside env QT_QPA_PLATFORM=offscreen "$home/example/example_host" "$home/root"
}

expect_users()
{
    local user
    for user in pba-screen pba-token; do
        inside getent passwd "$user" | grep -q ':/nonexistent:/usr/sbin/nologin$' || fail "There is no user $user."
    done
    [[ " $(inside id -nG pba-screen) " = *" video "* ]] || fail "pba-screen may not use the framebuffer."
}

# What differs from the system before, without the bookkeeping of packages, logs and caches.
traces()
{
    local path
    while IFS= read -r -d '' path; do
        if [ -d "$CHANGES/$path" ] && [ ! -L "$CHANGES/$path" ]; then
            [ -d "/$path" ] || echo "$path"
        else
            cmp -s "$CHANGES/$path" "/$path" || echo "$path"
        fi
    done < <(cd "$CHANGES" && find . -mindepth 1 -printf '%P\0') \
        | grep -vE '^(var/(lib/dpkg|lib/apt|log|cache)/|etc/([a-z]*-|ld\.so\.cache)$|tmp/)' || true
    inside dpkg-query --list 'pba-*' 'libpba-*' 2>/dev/null | grep -E '^[^u+|D]' || true
    find "$CHANGES/var/lib/dpkg/info" -name '*pba-*'
}

# The user's tool fails half-way: the package is left half configured, and the next attempt mends it.
mv "$SYSTEM/usr/sbin/adduser" "$SYSTEM$home"
! install 0.9.0 >"$packages/log" 2>&1 || fail "Without users the installation calls itself done."
[[ $(inside dpkg-query --show --showformat '${Status}' pba-host) = *half-configured ]] || fail "$(cat "$packages/log")"
mv "$SYSTEM$home/adduser" "$SYSTEM/usr/sbin"
quietly inside dpkg --configure --pending
expect_users
use
build_host

quietly install '0.9.0+test'
[ "$(inside dpkg-query --show --showformat '${Version} ' pba-{admin,host,view} libpba-view-dev)" = \
    '0.9.0+test 0.9.0+test 0.9.0+test 0.9.0+test ' ] || fail "The upgrade leaves another version."
expect_users
log_on_at_terminal

quietly inside dpkg --remove pba-host pba-admin
expect_users
quietly inside dpkg --purge pba-host pba-admin pba-view libpba-view-dev
left=$(traces)
[ -z "$left" ] || fail "This is left of the packages:" "$left"
[ -n "$thorough" ] || exit 0

# Whatever our programs need, they say so: all that nobody asks for goes.
quietly install 0.9.0 pba-admin pba-host pba-view
inside apt-mark showmanual | grep -v '^pba-' | quietly inside xargs apt-mark auto
quietly inside apt-get autoremove -y -q --purge -o APT::AutoRemove::RecommendsImportant=false \
    -o APT::AutoRemove::SuggestsImportant=false
! inside dpkg-query --show qt6-base-dev >/dev/null 2>&1 || fail "What nobody asks for has stayed."
use
