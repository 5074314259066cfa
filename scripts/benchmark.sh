#!/usr/bin/env bash
# Builds and runs the benchmarks, prints their table and whether the limits hold (which is the exit
# code). Best run on a machine that has nothing else to do; takes some minutes.
#
#   scripts/benchmark.sh [--update]      --update: put the table into docs/performance.md
set -euo pipefail
cd "$(dirname "$0")/.."

case "$*" in
"" | --update) ;;
*)
    echo "benchmark.sh: takes nothing but --update, not '$*'" >&2
    exit 2
    ;;
esac

scripts/setup.sh build benchmark
build=build/benchmark
mkdir -p "$build"
if ! { cmake --preset release -B "$build" -DPRODUCTION_BUILD_BENCHMARKS=ON -DBUILD_TESTING=OFF &&
    cmake --build "$build" --target production-benchmark; } >"$build/build.log" 2>&1; then
    cat "$build/build.log" >&2
    exit 1
fi

describe_machine() {
    . /etc/os-release
    printf '%s, %s cores, %s GiB; %s, Linux %s, Qt %s, glibc %s; load %s at the start; %s\n\n' \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)" "$(nproc)" \
        "$(awk '/MemTotal/ { printf "%.0f", $2 / 1048576 }' /proc/meminfo)" "$PRETTY_NAME" \
        "$(uname -r)" "$(qmake -query QT_VERSION)" "$(getconf GNU_LIBC_VERSION | cut -d' ' -f2)" \
        "$(cut -d' ' -f1 /proc/loadavg)" "$(date +%Y-%m-%d)"
}

result=$build/result.md
describe_machine >"$result"
holds=0
"$build/bin/production-benchmark" >>"$result" || holds=$?
[ "$holds" -le 1 ] || exit "$holds" # it broke off
cat "$result"

if [ "${1-}" = --update ]; then
    document=docs/performance.md
    sed -e '/^<!-- table -->$/,/^<!-- end of table -->$/ {
            /^<!-- table -->$/ { p; r '"$result"'
            }
            /^<!-- end of table -->$/p
            d
        }' "$document" >"$build/performance.md"
    cp "$build/performance.md" "$document"
fi
exit "$holds"
