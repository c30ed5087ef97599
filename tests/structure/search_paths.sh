#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# search_paths.sh DIR...: programs and libraries below each DIR look for libraries at places relative to their own,
# and at no others. An empty entry would be the current directory.
set -euo pipefail
faults=0
for dir in "$@"; do
    binaries=$(find "$dir" -type f \( -perm -u+x -o -name 'lib*.so*' \))
    [ -n "$binaries" ] || { echo "$dir holds no program and no library."; exit 1; }
    while read -r file; do
        path=$(readelf --dynamic "$file" | sed -nE 's/.*\(R(UN)?PATH\).*\[(.*)\]$/\2/p')
        grep -qxE '(\$ORIGIN(/[^:]+)?(:|$))+' <<<"$path" && [ "${path%:}" = "$path" ] && continue
        printf '%s has the search path "%s"\n' "$file" "$path"
        faults=$((faults + 1))
    done <<<"$binaries"
done
[ "$faults" -eq 0 ]
