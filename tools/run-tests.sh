#!/usr/bin/env bash
# Builds everything and runs every test.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${BUILD_DIR:-$here/build}"
bash "$here/tools/setup.sh" "$build"
cd "$build"
ctest --output-on-failure -j"$(nproc)" --timeout 600
