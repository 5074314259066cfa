#!/usr/bin/env bash
# Builds everything and runs the whole test suite: plain, and under the sanitizers.
#
#   scripts/test.sh [PRESET]...      default: dev asan tsan
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build test
presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(dev asan tsan)
for preset in "${presets[@]}"; do
    echo "== $preset"
    cmake --preset "$preset" >"/tmp/production-configure.$$" 2>&1 || {
        cat "/tmp/production-configure.$$" >&2
        exit 1
    }
    rm -f "/tmp/production-configure.$$"
    cmake --build "build/$preset"
    ctest --preset "$preset" -j "$(nproc)"
done
