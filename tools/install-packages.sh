#!/usr/bin/env bash
# Installs the Debian packages named (as root) that are not installed yet.
# Usage: tools/install-packages.sh PACKAGE...
set -euo pipefail
missing=()
for p in "$@"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "Some packages are missing; run this as root (or install them: apt-get install ${missing[*]})." >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}"
