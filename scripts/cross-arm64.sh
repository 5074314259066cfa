#!/usr/bin/env bash
# Compiles the module, the bench (but for its window) and production-stick for 64-bit ARM, warnings
# being errors: build/arm64.
#
# Debian's Qt for that machine is unpacked below build/, not installed: no package of this machine
# changes but the compiler that is added.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build cross
sysroot=$PWD/build/sysroot-arm64
if [ ! -d "$sysroot" ]; then
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    mkdir -p "$work/state/lists/partial" "$work/cache/archives/partial"
    cat >"$work/apt.conf" <<CONF
Dir::State "$work/state";
Dir::State::status "/dev/null";
Dir::Cache "$work/cache";
APT::Architecture "arm64";
APT::Architectures { "arm64"; };
APT::Install-Recommends "false";
APT::Sandbox::User "";
CONF
    export APT_CONFIG=$work/apt.conf
    apt-get update -q
    # The library with all it needs; of its development packages only what they hold themselves.
    apt-get install -qy --download-only libqt5core5a
    (cd "$work/cache/archives" && apt-get download -q qtbase5-dev qt5-qmake)
    unset APT_CONFIG
    for package in "$work"/cache/archives/*.deb; do
        dpkg-deb -x "$package" "$work/root"
    done
    # Qt's CMake package looks for its tools, which run on this machine, beside itself.
    mkdir -p "$work/root/usr/lib/qt5"
    ln -s /usr/lib/qt5/bin "$work/root/usr/lib/qt5/bin"
    mkdir -p build
    mv "$work/root" "$sysroot"
fi

cmake --preset arm64
cmake --build build/arm64
