#!/usr/bin/env bash
# Installs what the other scripts need: Debian packages, only those that are missing.
#
#   scripts/setup.sh [GROUP]...      groups: build test check benchmark cross package fuzz (default: build)
set -euo pipefail

packages_of() {
    case $1 in
    build) echo g++ cmake ninja-build qtbase5-dev qttools5-dev qttools5-dev-tools ;;
    test) echo pkg-config util-linux e2fsprogs fonts-noto-cjk ;;
    check) echo clang clang-format clang-tidy clazy gcovr doxygen graphviz man-db bash-completion ;;
    benchmark) echo libbenchmark-dev libglib2.0-dev pkg-config ;;
    cross) echo g++-aarch64-linux-gnu ;;
    package) echo dpkg-dev fakeroot file ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    *)
        echo "setup.sh: there is no package group '$1' (build, test, check, benchmark, cross, package, fuzz)" >&2
        exit 1
        ;;
    esac
}

is_installed() {
    dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

wanted=()
for group in "${@:-build}"; do
    list=$(packages_of "$group")
    read -ra list <<<"$list"
    wanted+=("${list[@]}")
done

if ! command -v dpkg-query apt-get >/dev/null; then
    echo "setup.sh: this is no Debian; please install what these packages hold: ${wanted[*]}" >&2
    for tool in cmake ninja c++ qmake; do
        command -v "$tool" >/dev/null || exit 1
    done
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null || ! sudo -v; then
        echo "setup.sh: please have these packages installed as root: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! {
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -qy --no-install-recommends "${missing[@]}"
} >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    echo "setup.sh: could not install: ${missing[*]}" >&2
    exit 1
fi
