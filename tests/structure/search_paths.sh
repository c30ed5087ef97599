#!/bin/sh
# search_paths.sh DIR: programs and libraries in DIR look for libraries at places relative to their own, and at no
# others. An empty entry would be the current directory.
set -eu
faults=0
for file in "$1"/*; do
    path=$(readelf --dynamic "$file" | sed -nE 's/.*\(R(UN)?PATH\).*\[(.*)\]$/\2/p')
    printf '%s\n' "$path" | grep -qxE '(\$ORIGIN(/[^:]+)?(:|$))+' && [ "${path%:}" = "$path" ] && continue
    printf '%s has the search path "%s"\n' "$file" "$path"
    faults=$((faults + 1))
done
[ "$faults" -eq 0 ]
