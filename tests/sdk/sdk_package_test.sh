#!/usr/bin/env bash
# Installs the project into a temporary prefix, builds a host against the
# installed SDK package alone, and lets it load the installed plug-in.
set -euo pipefail
build_dir="$1"
source_dir="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
cmake -S "$source_dir/consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/build" >/dev/null
"$work/build/sdk_consumer" "$work/prefix/lib/vorlik/plugins/libzelvane.so"
