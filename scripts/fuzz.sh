#!/usr/bin/env bash
# Fuzzes the settings format: scripts/fuzz.sh [minutes], 30 unless told, with two jobs.
# What it finds is copied to tests/corpus, which the ordinary tests replay. JOBS and BUILD_DIR may be
# set in the environment.
set -euo pipefail
cd "$(dirname "$0")/.."

minutes=${1:-30}
jobs=${JOBS:-2}
build=${BUILD_DIR:-build/fuzz}
work=$build/run

scripts/setup.sh build fuzz
cmake --preset fuzz -B "$build" >/dev/null
nice cmake --build "$build" --target fuzz_format
rm -rf "$work/finds" "$work"/fuzz-*.log
mkdir -p "$work/corpus" "$work/finds"

export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fuzzer=$(realpath "$build/bin/fuzz_format")
dictionary=$PWD/tests/fuzz/format.dict
seeds=$PWD/tests/corpus
cd "$work"
# The entropic schedule costs more here than all executions together.
status=0
nice -n 19 "$fuzzer" corpus "$seeds" -dict="$dictionary" -artifact_prefix=finds/ \
    -max_total_time=$((minutes * 60)) -entropic=0 -max_len=4096 -timeout=20 -rss_limit_mb=2048 \
    -print_final_stats=1 -jobs="$jobs" -workers="$jobs" || status=$?

grep -hE 'executed_units|peak_rss|^This input|ERROR|SUMMARY' fuzz-*.log || true
tail -qn 400 fuzz-*.log | grep -E 'cov:' | tail -n "$jobs" || true
for find in finds/*; do
    [[ -e $find ]] || continue
    cp "$find" "$seeds/"
    echo "Found: tests/corpus/$(basename "$find") (minimise it, and name it after the fault)" >&2
    status=1
done
exit "$status"
