#!/usr/bin/env bash
# Builds the Debian packages into build/package.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh build package
cmake --preset package
cmake --build build/package
cd build/package
cpack -G DEB
