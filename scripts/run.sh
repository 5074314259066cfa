#!/usr/bin/env bash
# Builds the bench and production-stick, and takes a unit through production from a stick. Each further
# run is the next unit with the same stick. Options are handed on to production-bench (see its --help).
#
#   scripts/run.sh [--fresh] [--window] [OPTION]...
#
#   --fresh    start again with a new copy of the stick
#   --window   show the unit in a window, where the stick is pulled by hand
set -euo pipefail
cd "$(dirname "$0")/.."

fresh=
if [ "${1-}" = --fresh ]; then
    fresh=yes
    shift
fi
targets=(production-bench production-stick)
mode=(--unplug-when-done)
several=
for option in "$@"; do
    case $option in
        --window)
            targets+=(production_bench_window)
            mode=()
            several=yes
            ;;
        --loop) several=yes ;;
    esac
done

scripts/setup.sh build
build=build/release
log=$build/run.log
mkdir -p "$build"
if ! { cmake --preset release && cmake --build "$build" --target "${targets[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

line=$build/line # one stick and its units
[ -z "$fresh" ] || rm -rf "$line"
if [ ! -d "$line/stick" ]; then
    mkdir -p "$line"
    cp -r examples/full-line "$line/stick"
fi
unit=$line # where production-bench numbers several units itself
if [ -z "$several" ]; then
    number=1
    while [ -d "$line/unit-$(printf %03d "$number")" ]; do
        number=$((number + 1))
    done
    unit=$line/unit-$(printf %03d "$number")
fi

exec "$build/bin/production-bench" \
    --unit "$unit" --stick "$line/stick" "${mode[@]}" "$@"
