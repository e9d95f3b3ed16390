#!/usr/bin/env bash
# Installs the project into a temporary prefix and uses it as someone who has
# nothing else would.
#   sdk:  builds a host against the installed SDK package alone and lets it
#         load the installed plug-in.
#   demo: runs the installed vorlik-sim, without naming a plug-in, on the
#         installed work cell and scenario; it must print the program the
#         build tree's vorlik-sim prints.
# Usage: install_test.sh BUILD_DIR sdk|demo
set -euo pipefail
build_dir="$1"
mode="$2"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source_dir="$(cd "$here/../.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null

case "$mode" in
  sdk)
    cmake -S "$here/consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
    cmake --build "$work/build" >/dev/null
    "$work/build/sdk_consumer" "$work/prefix/lib/vorlik/plugins/libzelvane.so"
    ;;
  demo)
    export QT_QPA_PLATFORM=offscreen
    examples="$work/prefix/share/zelvane/examples"
    # Times differ from run to run; what the run did does not.
    timeless() { sed -e 's/  ([0-9.]* ms)$//' -e '/^run: /d'; }
    "$build_dir/bin/vorlik-sim" --script "$source_dir/examples/link-pick-place.json" --print \
      "$source_dir/examples/workcell.json" | timeless > "$work/built.txt"
    # Run from elsewhere, so that nothing is found through the working folder.
    (cd "$work" && "$work/prefix/bin/vorlik-sim" --script "$examples/link-pick-place.json" --print \
      "$examples/workcell.json") | timeless > "$work/installed.txt"
    grep -q '^program PickToPlace for Arm1:$' "$work/built.txt" || {
      echo "the build tree's run printed no program:"; cat "$work/built.txt"; exit 1; }
    diff -u "$work/built.txt" "$work/installed.txt"
    ;;
  *)
    echo "usage: install_test.sh BUILD_DIR sdk|demo" >&2
    exit 2
    ;;
esac
