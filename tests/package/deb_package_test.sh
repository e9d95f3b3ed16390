#!/usr/bin/env bash
# Builds the two Debian packages with CPack and checks them as Debian would
# and as their users will: what each holds, lintian (no error, no warning),
# and, unpacked into a staging root, the runtime package running the demo as
# the build tree does and a host project building against zelvane-dev.
# Usage: deb_package_test.sh BUILD_DIR
set -euo pipefail
build_dir="$1"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
source_dir="$(cd "$here/../.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
failed=0
fail() { echo "$*"; failed=1; }

cpack -G DEB --config "$build_dir/CPackConfig.cmake" -B "$work" >/dev/null
runtime="$(find "$work" -maxdepth 1 -name 'zelvane_*.deb' -print -quit)"
dev="$(find "$work" -maxdepth 1 -name 'zelvane-dev_*.deb' -print -quit)"
[[ -n "$runtime" && -n "$dev" ]] || { echo "cpack did not make zelvane_*.deb and zelvane-dev_*.deb:"; ls "$work"; exit 1; }

holds() {  # PACKAGE FILE...
  local deb="$1"; shift
  dpkg-deb -c "$deb" | awk '{print $NF}' > "$work/contents.txt"
  for file in "$@"; do
    grep -qxF "$file" "$work/contents.txt" || fail "missing from $(basename "$deb"): $file"
  done
}
holds "$runtime" ./usr/lib/vorlik/plugins/libzelvane.so ./usr/bin/vorlik-sim \
  ./usr/share/zelvane/examples/workcell.json ./usr/share/zelvane/examples/link-pick-place.json \
  ./usr/share/applications/vorlik-sim.desktop ./usr/share/icons/hicolor/scalable/apps/vorlik-sim.svg \
  ./usr/share/man/man1/vorlik-sim.1.gz ./usr/share/doc/zelvane/copyright ./usr/share/doc/zelvane/changelog.gz
holds "$dev" ./usr/include/vorlik/iappvorlik.h ./usr/include/vorlik/host_api.h \
  ./usr/lib/cmake/Zelvane/ZelvaneConfig.cmake ./usr/lib/cmake/Zelvane/ZelvaneTargets.cmake \
  ./usr/share/doc/zelvane-dev/copyright ./usr/share/doc/zelvane-dev/changelog.gz
dpkg-deb -c "$runtime" | grep -q './usr/include/' && fail "the runtime package holds SDK headers"
[[ "$(dpkg-deb -f "$dev" Depends)" == *"zelvane (= $(dpkg-deb -f "$runtime" Version))"* ]] ||
  fail "zelvane-dev does not depend on this zelvane: $(dpkg-deb -f "$dev" Depends)"

# lintian: no error and no warning on either package.
command -v lintian >/dev/null || { echo "lintian is not installed (tools/setup.sh installs it)"; exit 1; }
lintian --allow-root "$runtime" "$dev" > "$work/lintian.txt" 2>&1 || true
if grep -E '^(E|W): ' "$work/lintian.txt"; then
  fail "lintian found the errors and warnings above"
fi

# Unpacked into a staging root: the demo runs as in the build tree.
stage="$work/stage"
dpkg-deb -x "$runtime" "$stage"
dpkg-deb -x "$dev" "$stage"
export QT_QPA_PLATFORM=offscreen
timeless() { sed -e 's/  ([0-9.]* ms)$//' -e '/^run: /d'; }
"$build_dir/bin/vorlik-sim" --script "$source_dir/examples/link-pick-place.json" --print \
  "$source_dir/examples/workcell.json" | timeless > "$work/built.txt"
examples="$stage/usr/share/zelvane/examples"
(cd "$work" && "$stage/usr/bin/vorlik-sim" --script "$examples/link-pick-place.json" --print \
  "$examples/workcell.json") | timeless > "$work/staged.txt"
grep -q '^program PickToPlace for Arm1:$' "$work/built.txt" || fail "the build tree's demo printed no program"
diff -u "$work/built.txt" "$work/staged.txt" || fail "the staged demo differs from the build tree's"

# A host project finds the SDK in the staging root and loads the staged plug-in.
cmake -S "$here/consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$stage/usr" >/dev/null
cmake --build "$work/consumer" >/dev/null
"$work/consumer/sdk_consumer" "$stage/usr/lib/vorlik/plugins/libzelvane.so" || fail "the host built against zelvane-dev failed"
exit "$failed"
