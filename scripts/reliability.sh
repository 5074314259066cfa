#!/usr/bin/env bash
# Tries every fault exhaustively and prints the figures that docs/reliability.md quotes. Takes the
# better part of an hour on two cores; tests/faults in the ordinary suite is a selection of it.
#
#   scripts/reliability.sh [TEST]...      all of tst_faults, or the named of its tests
#
# PRODUCTION_FAULTS_SEED=N repeats the random moments of an earlier run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build test
export PRODUCTION_FAULTS=all

build() {
    cmake --preset "$1" >/dev/null
    cmake --build "build/$1" --target tst_faults production-bench
}

build release
build/release/bin/tst_faults "$@"
[ $# -eq 0 ] || exit 0

# A thousand lives and every failing call once more, with the sanitizers watching.
for preset in asan tsan; do
    echo "== $preset"
    build "$preset"
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    TSAN_OPTIONS=ignore_noninstrumented_modules=1:halt_on_error=1 \
        "build/$preset/bin/tst_faults" manyLives pulledAtEveryStep everyError leftover
done
