#!/usr/bin/env bash
# Builds the planner and runs it on the bundled work cell: computes the map,
# links Pick to Place, prints the program and the run's figures, saves the
# planned station and draws a picture of the cell with the map and the path.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${BUILD_DIR:-$here/build}"
bash "$here/tools/setup.sh" "$build"
out="${DEMO_OUT:-$here/out}"
mkdir -p "$out"
"$build/bin/vorlik-sim" "$here/examples/workcell.json" --script "$here/examples/link-pick-place.json" \
  --transcript "$out/transcript.jsonl" --save "$out/workcell-planned.json" --render "$out/workcell.png" --print
echo "Saved the planned station to $out/workcell-planned.json and its picture to $out/workcell.png"
