#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# profile.sh BIN ROOT OUT.svg: draws where the instructions go until the page is painted, the screen's beside the bare
# dialog's. As root both run as nobody, for a profile is written to a pipe, the one way out of a screen.
set -euo pipefail
bin=$1
root=$2
out=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
as_nobody=()
[ "$(id -u)" -ne 0 ] || as_nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups)
export QT_QPA_PLATFORM=offscreen BENCH_PROBE_ENDS=1 BENCH_PAINT_PROBE=$bin/libbench_paint_probe.so PBE_LOG=/dev/null
export LD_PRELOAD="$bin/libbench_probe_loader.so $bin/libbench_no_filter.so"

profile()
{
    # The pipe belongs to whoever makes it.
    env -u LD_PRELOAD "${as_nobody[@]}" env HOME=/nonexistent XDG_RUNTIME_DIR=/nonexistent bash -c '
        export LD_PRELOAD=$0
        "$@" 2> >(env -u LD_PRELOAD cat) | env -u LD_PRELOAD cat' "$LD_PRELOAD" "$@"
}

valgrind=(valgrind --tool=callgrind --callgrind-out-file=/proc/self/fd/2)
profile "$bin/serve_screen" "${valgrind[@]}" "$bin/pba_screen" --root "$root" >"$work/screen"
profile "${valgrind[@]}" "$bin/bench_bare_dialog" >"$work/bare"
unset LD_PRELOAD
"$(dirname "$0")/plot_instructions.py" "$out" "pba_screen=$work/screen" "bare dialog=$work/bare"
