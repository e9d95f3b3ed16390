#!/usr/bin/env bash
# Builds everything (plug-in, host, tests) with AddressSanitizer and
# UndefinedBehaviorSanitizer in a build folder of its own and runs every test there.
# Usage: tools/run-sanitized-tests.sh [gcc|clang]   (default: gcc)
# The folder is build-asan-<compiler> unless BUILD_DIR names another.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
compiler="${1:-gcc}"
case "$compiler" in
  gcc) export CXX=g++ ;;
  clang) bash "$here/tools/install-packages.sh" clang libclang-rt-14-dev
         export CXX=clang++ ;;
  *) echo "usage: $0 [gcc|clang]" >&2; exit 2 ;;
esac
build="${BUILD_DIR:-$here/build-asan-$compiler}"
bash "$here/tools/setup.sh" "$build" -DZELVANE_SANITIZE=ON
cd "$build"
ctest --output-on-failure -j"$(nproc)" --timeout 1200
