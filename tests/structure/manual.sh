#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# manual.sh MADE PROGRAMS: the pages in the directory MADE are in order and have every option that the help of the
# programs in PROGRAMS has, and bash completes the command lines.
set -euo pipefail
made=$(realpath "$1") programs=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { printf '%s\n' "$@" >&2; exit 1; }

for page in "$made"/*.8; do
    said=$(groff -man -ww -z -Tutf8 "$page" 2>&1) || fail "$page:" "$said"
    [ -z "$said" ] || fail "$page:" "$said"
done

# The lines of the part that begins with the heading $2, up to the next one.
part() { awk -v heading="$2" '/^\.S[HS]/ { inside = index($0, heading) } inside' "$1"; }
compare() # COMMAND WORD... HEADING
{
    local help option text
    text=$(part "$made/$1.8" "${!#}")
    help=$("$programs/$1" "${@:2:$#-2}" --help)
    while read -r option; do
        grep -qF -- "\\fB${option//-/\\-}\\fR" <<<"$text" || fail "The page of $* has no $option."
    done < <(grep -oE '^  --[a-z0-9-]+' <<<"$help")
}
compare pba_host 'SH OPTIONS'
mapfile -t commands < <(sed -n 's/^\.SS "\(.*\)"$/\1/p' "$made/pba_admin.8")
[ ${#commands[@]} -gt 10 ] || fail "The commands of pba_admin are missing."
for command in "${commands[@]}"; do
    read -ra words <<<"$command"
    compare "${words[@]}" "SS \"$command\""
done

cd "$work"
mkdir 'a dir' && touch 'a file'
compopt() { :; } # there is no line that is being edited
for program in pba_host pba_admin; do
    # shellcheck source=/dev/null
    . "$made/$program"
    complete -p "$program" >/dev/null
done
# Words as bash splits them, and what it offers for the last one.
while IFS='|' read -r line expected; do
    IFS=, read -ra COMP_WORDS <<<"$line,"
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMPREPLY=()
    "_${COMP_WORDS[0]}"
    mapfile -t COMPREPLY < <(printf '%s\n' "${COMPREPLY[@]}" | sort)
    [ "${COMPREPLY[*]}" = "$expected" ] || fail "$line: ${COMPREPLY[*]}"
done <<'EOF'
pba_admin,vo|volume
pba_admin,volume,|create info
pba_admin,user,list,--volume,x,--j|--json
pba_admin,volume,create,--size,20M,--s|
pba_admin,volume,create,--size,=,20M,x,--us|--user
pba_admin,user,add,--volume,x,|
pba_admin,user,add,--volume,list,--vol|
pba_admin,settings,compile,in,|a dir a file
pba_admin,settings,compile,in,out,|
pba_admin,recovery,keygen,--out,|a dir
pba_admin,frob,|
pba_host,--state,|header root
pba_host,--state,=|header root
pba_host,--state,=,h|header
pba_host,--root,a|a dir
pba_host,--volume,a|a dir a file
pba_host,--mapper-name,|
EOF
