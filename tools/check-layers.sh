#!/usr/bin/env bash
# Checks the include graph against the layers of the repository:
#   plug-in: plugin/ > ui/ > operations/ > query/ > roadmap/ > SDK (sdk/vorlik)
#   host:    simhost/main.cpp > run/ > window/ > host/ > station/ > cell/, and the SDK
# A file may include headers of its own layer and of the layers below it, never
# above; the plug-in and the host never include each other (only the SDK is
# shared); the planner core (roadmap/, query/) includes and links nothing of
# Qt Widgets, so that it runs without a window; and no two modules (a header with its source) include each other,
# directly or round a longer circle. Prints every offence; exits 1 if any.
# Usage: tools/check-layers.sh [SOURCE_DIR]
set -uo pipefail
root="$(cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}" && pwd)"
cd "$root" || exit 2

# Layer of a file: "program:rank". Higher ranks may include lower ones.
layer_of() {
  case "$1" in
    sdk/*) echo "sdk:0" ;;
    roadmap/*) echo "plugin:1" ;;
    query/*) echo "plugin:2" ;;
    operations/*) echo "plugin:3" ;;
    ui/*) echo "plugin:4" ;;
    plugin/*) echo "plugin:5" ;;
    simhost/cell/*) echo "host:1" ;;
    simhost/station/*) echo "host:2" ;;
    simhost/host/*) echo "host:3" ;;
    simhost/window/*) echo "host:4" ;;
    simhost/run/*) echo "host:5" ;;
    simhost/main.cpp) echo "host:6" ;;
    *) echo "none:0" ;;
  esac
}

mapfile -t files < <(find sdk plugin roadmap query operations ui simhost -type f \( -name '*.h' -o -name '*.cpp' \) | sort)

# Where each header name lives (a name found twice is ambiguous and reported).
declare -A header_at=()
problems=0
report() {
  echo "$*"
  problems=$((problems + 1))
}
for file in "${files[@]}"; do
  [[ "$file" == *.h ]] || continue
  name="${file#sdk/}"
  [[ "$file" == sdk/* ]] || name="$(basename "$file")"
  if [[ -n "${header_at[$name]:-}" ]]; then
    report "two headers named $name: ${header_at[$name]} and $file"
  fi
  header_at[$name]="$file"
done

edges="$(mktemp)"
trap 'rm -f "$edges"' EXIT
for file in "${files[@]}"; do
  from_layer="$(layer_of "$file")"
  if [[ "$from_layer" == none:* ]]; then
    report "$file: in no layer (a simhost file belongs in run/, window/, host/, station/ or cell/)"
    continue
  fi
  from_program="${from_layer%%:*}"
  from_rank="${from_layer##*:}"
  module_from="${file%.*}"
  while IFS= read -r included; do
    target="${header_at[$included]:-}"
    # A path into another folder ("../station/station.h", "cell/cell_model.h")
    # still names one of ours: its file name tells which.
    [[ -n "$target" || "$included" != */* ]] || target="${header_at[${included##*/}]:-}"
    [[ -n "$target" ]] || continue  # Qt, the standard library, Eigen, FCL, generated files
    to_layer="$(layer_of "$target")"
    to_program="${to_layer%%:*}"
    to_rank="${to_layer##*:}"
    if [[ "$to_program" == sdk ]]; then
      :
    elif [[ "$from_program" == sdk ]]; then
      report "$file includes $target: the SDK includes nothing of the plug-in or the host"
    elif [[ "$to_program" != "$from_program" ]]; then
      report "$file includes $target: the plug-in and the host share only the SDK"
    elif ((to_rank > from_rank)); then
      report "$file includes $target: a layer above its own"
    fi
    module_to="${target%.*}"
    [[ "$module_to" != "$module_from" ]] && echo "$module_from $module_to" >> "$edges"
  done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"\([^"]*\)".*/\1/p' "$file")
done

# The planner core uses Qt Core only: no Qt Widgets header (<QWidget>,
# <QtWidgets/...>) in its files and no Widgets in its build lists.
widgets_dir="$(ls -d /usr/include/*/qt5/QtWidgets /usr/include/qt5/QtWidgets 2>/dev/null | head -n 1)"
for file in "${files[@]}"; do
  [[ "$file" == roadmap/* || "$file" == query/* ]] || continue
  while IFS= read -r included; do
    name="${included#QtWidgets/}"
    if [[ "$included" == QtWidgets/* || ( -n "$widgets_dir" && -e "$widgets_dir/$name" ) ]]; then
      report "$file includes <$included>: the planner core uses no Qt Widgets"
    fi
  done < <(sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*<\([^>]*\)>.*/\1/p' "$file")
done
for list in roadmap/CMakeLists.txt query/CMakeLists.txt; do
  if grep -q 'Widgets' "$list"; then
    report "$list links Qt Widgets: the planner core uses Qt Core only"
  fi
done

# Circles between modules: tsort names the modules of each loop it finds.
loops="$(sort -u "$edges" | tsort 2>&1 >/dev/null | grep -v 'input contains a loop' | sed 's/^tsort: //')"
if [[ -n "$loops" ]]; then
  report "modules that include each other, round a circle:"
  echo "$loops" | sed 's/^/  /'
fi

if ((problems > 0)); then
  echo "check-layers: $problems problem(s)"
  exit 1
fi
echo "check-layers: ${#files[@]} files, every include follows the layers, no circles"
