#!/usr/bin/env bash
# Builds the planner and runs it on the bundled work cell, printing what happened.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${BUILD_DIR:-$here/build}"
bash "$here/tools/setup.sh" "$build"
out="${DEMO_OUT:-$here/out}"
mkdir -p "$out"
"$build/bin/vorlik-sim" "$here/examples/workcell.json" --script "$here/examples/link-pick-place.json" \
  --transcript "$out/transcript.jsonl" --save "$out/workcell-planned.json" --print
