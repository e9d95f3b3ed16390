#!/usr/bin/env bash
# Installs what the build needs (Debian packages, as root), configures and builds.
# Usage: tools/setup.sh [BUILD_DIR [CMAKE_OPTION...]]   (default: build)
# SETUP_TARGETS names the targets to build (default: all of them).
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${1:-$here/build}"
shift || true
targets=()
for target in ${SETUP_TARGETS:-}; do targets+=(--target "$target"); done

packages=(cmake g++ make pkg-config qtbase5-dev qtbase5-dev-tools libqt5svg5 libqt5svg5-dev
          libgtest-dev googletest xvfb xauth libeigen3-dev libfcl-dev binutils libompl-dev qttools5-dev-tools
          dpkg-dev lintian)
bash "$here/tools/install-packages.sh" "${packages[@]}"

echo "Configuring and building in $build ..."
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
# The build's own chatter goes to a log; a failed build shows its end.
if ! cmake --build "$build" -j"$(nproc)" "${targets[@]}" > "$build/build.log" 2>&1; then
  tail -n 60 "$build/build.log" >&2
  echo "The build failed; the whole log is $build/build.log" >&2
  exit 1
fi
