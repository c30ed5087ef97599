#!/usr/bin/env bash
# Has clang-tidy read all sources, or those given: scripts/lint.sh [FILE...]. Takes about as long as a build of
# everything, which is why no test does it. Wants the package clang-tidy and the build that ./test asan makes.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

[ -e build/asan/compile_commands.json ] || fail "There is no build to go by; run ./test asan first."
[ $# -gt 0 ] || mapfile -t files < <(git ls-files '*.cpp' | grep -E '^(admin|base|bench|fuzz|host|module|platform|settings_format|volume)/')
printf '%s\0' "${@:-${files[@]}}" | xargs -0 -P "$(nproc)" -n 4 clang-tidy -p build/asan --quiet
