#!/usr/bin/env bash
# The checks beside the tests; each ends with an error when it finds anything.
#
#   scripts/check.sh [CHECK]...      default: format translations docs tidy clazy coverage
set -euo pipefail
cd "$(dirname "$0")/.."

check_format() {
    git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror
}

check_tidy() {
    quietly cmake --preset tidy
    quietly cmake --build --preset tidy
}

check_clazy() {
    quietly cmake --preset clazy
    quietly cmake --build --preset clazy
}

check_docs() {
    quietly cmake --preset dev
    quietly cmake --build build/dev --target docs
}

# Brings translations/ up to date with the sources; every text then has its translation.
check_translations() {
    quietly cmake --preset dev
    quietly cmake --build build/dev --target update-translations
    if grep --count 'type="unfinished"' translations/*.ts | grep -v ':0$'; then
        echo "check.sh: these files have texts without a translation" >&2
        return 1
    fi
}

# The lines that the tests run, and the branches that the code takes of its own.
check_coverage() {
    quietly cmake --preset coverage
    quietly cmake --build --preset coverage
    find build/coverage -name '*.gcda' -delete
    quietly ctest --preset coverage -j "$(nproc)"
    gcovr --root . --filter module/ --filter worker/ --filter settings/ \
        --exclude-throw-branches --exclude-unreachable-branches \
        --fail-under-line 97 --fail-under-branch 90 --print-summary --sort-percentage \
        --html-details build/coverage/coverage.html --txt - build/coverage
}

quietly() {
    local log
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

all=(format translations docs tidy clazy coverage)
checks=("${@:-${all[@]}}")
for check in "${checks[@]}"; do
    if ! declare -F "check_$check" >/dev/null; then
        echo "check.sh: unknown check '$check' (${all[*]})" >&2
        exit 2
    fi
done

scripts/setup.sh build test check
for check in "${checks[@]}"; do
    echo "== $check"
    "check_$check"
done
