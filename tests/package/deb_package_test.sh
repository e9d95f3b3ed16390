#!/usr/bin/env bash
# Builds the Debian package with CPack and checks that it holds the plug-in,
# the simulated host, the SDK headers with the CMake package, and the demo.
# Usage: deb_package_test.sh BUILD_DIR
set -euo pipefail
build_dir="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cpack -G DEB --config "$build_dir/CPackConfig.cmake" -B "$work" >/dev/null
deb="$(find "$work" -maxdepth 1 -name 'zelvane_*.deb' -print -quit)"
[[ -n "$deb" ]] || { echo "cpack made no zelvane_*.deb in $work"; ls -R "$work"; exit 1; }
dpkg-deb -c "$deb" | awk '{print $NF}' > "$work/contents.txt"
missing=0
for file in ./usr/lib/vorlik/plugins/libzelvane.so ./usr/bin/vorlik-sim \
  ./usr/include/vorlik/iappvorlik.h ./usr/include/vorlik/host_api.h \
  ./usr/lib/cmake/Zelvane/ZelvaneConfig.cmake ./usr/lib/cmake/Zelvane/ZelvaneTargets.cmake \
  ./usr/share/zelvane/examples/workcell.json ./usr/share/zelvane/examples/link-pick-place.json; do
  if ! grep -qxF "$file" "$work/contents.txt"; then
    echo "missing from $(basename "$deb"): $file"
    missing=1
  fi
done
[[ "$(dpkg-deb -f "$deb" Package)" == zelvane ]] || { echo "package name: $(dpkg-deb -f "$deb" Package)"; missing=1; }
exit "$missing"
