#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures the view beside a bare dialog of the same toolkit, and the costs of single parts; prints one table.
# A benchmark, not a test: it passes no judgement, for the figures depend on the computer.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

install_packages scripts/packages.txt
mkdir -p build
build gcc bench texts >&2

bin=$PWD/build/gcc/bin
demo=$PWD/build/bench
[ -e "$demo/fresh.img" ] || scripts/prepare_demo.sh "$bin/pba_admin" "$demo" >&2
scripts/put_texts.sh build/gcc en "$demo/root"
start_x_server Xvfb -screen 0 1024x768x24

# The toolkit asks for a runtime directory that is its user's alone.
mkdir -p -m 700 "$demo/runtime"
export LC_ALL=C.UTF-8 PBE_ROOT=$demo/root PBE_LOG=$demo/log XDG_RUNTIME_DIR=$demo/runtime
unset PBE_LOG_SEVERITY QT_STYLE_OVERRIDE QT_SCALE_FACTOR
rm -f "$PBE_LOG"

echo "| Measured | View | Bare dialog | Ratio | Target |"
echo "|---|---|---|---|---|"
for platform in offscreen xcb; do
    export QT_QPA_PLATFORM=$platform
    "$bin/bench_start" "$platform" "$bin/libbench_paint_probe.so" "$bin/bench_bare_dialog" \
        "$bin/pba_host" --root "$demo/root" --volume "$demo/volume.img"
done
"$bin/bench_wait_sign" "$demo"
"$bin/bench_parts"
QT_QPA_PLATFORM=offscreen "$bin/bench_parts" --benchmark_filter=Page
"$bin/bench_escrow"
