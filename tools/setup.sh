#!/usr/bin/env bash
# Installs what the build needs (Debian packages, as root), configures and builds.
# Usage: tools/setup.sh [BUILD_DIR]   (default: build)
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${1:-$here/build}"

packages=(cmake g++ make pkg-config qtbase5-dev qtbase5-dev-tools libqt5svg5 libqt5svg5-dev
          libgtest-dev googletest xvfb xauth libeigen3-dev libfcl-dev binutils libompl-dev qttools5-dev-tools)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    echo "Some packages are missing; run this as root (or install them: apt-get install ${missing[*]})." >&2
    exit 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

echo "Configuring and building in $build ..."
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
# The build's own chatter goes to a log; a failed build shows its end.
if ! cmake --build "$build" -j"$(nproc)" > "$build/build.log" 2>&1; then
  tail -n 60 "$build/build.log" >&2
  echo "The build failed; the whole log is $build/build.log" >&2
  exit 1
fi
