#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Measures the view beside a bare dialog of the same toolkit, and the costs of single parts; prints one table, and what
# has become worse since the last result that was committed. A benchmark, not a test: it passes no judgement, for the
# figures depend on the computer.
#   ./bench.sh           measures
#   ./bench.sh --keep    and puts result and plot into docs/performance, to be committed
#   ./bench.sh --peers   other programs with a login page as well; installs them
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

keep=
peers=
for argument in "$@"; do
    case $argument in
    --keep) keep=yes ;;
    --peers) peers=yes ;;
    *) fail "bench.sh knows --keep and --peers." ;;
    esac
done

install_packages scripts/packages.txt
install_packages bench/packages.txt
[ -z "$peers" ] || install_packages bench/peers.txt
mkdir -p build
build gcc bench texts >&2

bin=$PWD/build/gcc/bin
# Where the screen's user may read it, whoever keeps these sources.
demo=$(mktemp -d)
trap 'rm -rf "$demo"' EXIT
chmod 755 "$demo"
scripts/prepare_demo.sh "$bin/pba_admin" "$demo/demo" >&2
scripts/put_texts.sh build/gcc en "$demo/demo/root"
start_x_server Xvfb -screen 0 1024x768x24

# The toolkit asks for a runtime directory that is its user's alone.
mkdir -p -m 700 "$demo/runtime"
export LC_ALL=C.UTF-8 PBE_ROOT=$demo/demo/root PBE_LOG=$demo/log XDG_RUNTIME_DIR=$demo/runtime
unset PBE_LOG_SEVERITY QT_STYLE_OVERRIDE QT_SCALE_FACTOR

echo "| Measured | View | Bare dialog | Full screen | Ratio | Target |"
echo "|---|---|---|---|---|---|"
for platform in offscreen xcb; do
    QT_QPA_PLATFORM=$platform bench/measure.py "$platform" "$bin" "$demo/demo/root" "$demo/demo/volume.img" \
        --json "$demo/last.json" 2>"$demo/errors" || fail "$(cat "$demo/errors")"
done
"$bin/bench_request"
QT_QPA_PLATFORM=xcb "$bin/bench_wait_sign" "$demo"
QT_QPA_PLATFORM=xcb "$bin/bench_parts"
QT_QPA_PLATFORM=offscreen "$bin/bench_parts" --benchmark_filter=Page
"$bin/bench_escrow"
[ -z "$peers" ] || bench/peers.py "$bin" "$demo/demo/root" "$demo/demo/volume.img"
echo
bench/compare.py docs/performance/last.json "$demo/last.json" || true
[ -z "$keep" ] || {
    bench/profile.sh "$bin" "$demo/demo/root" docs/performance/instructions.svg
    cp "$demo/last.json" docs/performance/last.json
}
