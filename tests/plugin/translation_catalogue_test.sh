#!/usr/bin/env bash
# The shipped catalogue holds the texts lupdate extracts from today's sources:
# no text added, changed or dropped without the catalogue following.
# Usage: translation_catalogue_test.sh LUPDATE SOURCE_DIR
set -euo pipefail
lupdate="$1"
source_dir="$2"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$source_dir"
"$lupdate" -silent -no-obsolete -locations none roadmap query operations ui plugin -ts "$work/fresh.ts" >/dev/null
texts() { grep -E '<(name|source)>' "$1" | sed 's/^ *//' | sort; }
if ! diff -u <(texts resources/translations/zelvane.ts) <(texts "$work/fresh.ts"); then
  echo "resources/translations/zelvane.ts does not hold what lupdate extracts from the sources; run:" >&2
  echo "  rm resources/translations/zelvane.ts && lupdate -no-obsolete -locations none roadmap query operations ui plugin -ts resources/translations/zelvane.ts" >&2
  exit 1
fi
echo "catalogue up to date: $(grep -c '<message>' resources/translations/zelvane.ts) texts"
