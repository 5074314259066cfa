#!/usr/bin/env bash
# Renders the main states of the bench's window, in English and Chinese, at 100 % and 125 %.
#
#   scripts/screenshots.sh [FOLDER]      default: build/release/screenshots
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build test
build=${BUILD_DIR:-build/release}
folder=${1:-$build/screenshots}
mkdir -p "$folder"
cmake --preset release -B "$build" >/dev/null
cmake --build "$build" --target production_screenshots production_qm

XDG_RUNTIME_DIR=$(mktemp -d)
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export XDG_RUNTIME_DIR QT_QPA_PLATFORM=offscreen LC_CTYPE=C.UTF-8
export QT_LOGGING_RULES="default.debug=false"
unset LC_ALL LANGUAGE
for language in en_GB zh_CN; do
    for percent in 100 125; do
        LANG=$language.UTF-8 LC_MESSAGES=$language.UTF-8 \
            QT_SCALE_FACTOR=$(printf '%d.%02d' $((percent / 100)) $((percent % 100))) \
            "$build/bin/production_screenshots" "$folder" "${language%_*}-$percent" 2>&1 |
            sed '/^This plugin does not support propagateSizeHints/d' >&2
    done
done
echo "Rendered to $folder"
