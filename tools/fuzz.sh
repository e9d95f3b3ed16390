#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, with AddressSanitizer and UBSan) in a
# build folder of their own and runs each for a fixed time or number of
# executions, from its seed corpus in tests/fuzz/corpus/<target>/ (left as it
# is: new inputs go to the build folder). A crash, a leak, an input that runs
# longer than FUZZ_TIMEOUT seconds or needs more than FUZZ_RSS_MB megabytes
# fails the run; the input is kept in <build>/fuzz-findings/<target>/.
# Usage: tools/fuzz.sh [--seconds N | --runs N] [TARGET...]
#   default: --seconds 60 each, every target with a seed corpus
#   FUZZ_BUILD_DIR (default: build-fuzz), FUZZ_RSS_MB (2048), FUZZ_TIMEOUT (25)
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${FUZZ_BUILD_DIR:-$here/build-fuzz}"
limit=(-max_total_time=60)
targets=()
while [ $# -gt 0 ]; do
  case "$1" in
    --seconds) limit=(-max_total_time="$2"); shift 2 ;;
    --runs) limit=(-runs="$2"); shift 2 ;;
    -h|--help) sed -n '2,12p' "$0"; exit 0 ;;
    *) targets+=("$1"); shift ;;
  esac
done
if [ ${#targets[@]} -eq 0 ]; then
  for corpus in "$here"/tests/fuzz/corpus/*/; do targets+=("$(basename "$corpus")"); done
fi

bash "$here/tools/install-packages.sh" clang libclang-rt-14-dev
CXX=clang++ SETUP_TARGETS="${targets[*]}" bash "$here/tools/setup.sh" "$build" -DZELVANE_FUZZ=ON -DBUILD_TESTING=OFF

# Qt 5's JSON parser leaks on some malformed texts (QJsonDocument::fromJson,
# in Qt itself): leak checks would stop every run there. Our own leaks are
# checked where the corpus is replayed as a test in the sanitizer builds.
export ASAN_OPTIONS="detect_leaks=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
failed=()
for target in "${targets[@]}"; do
  work="$build/fuzz-corpus/$target"
  findings="$build/fuzz-findings/$target"
  mkdir -p "$work" "$findings"
  dictionary=()
  [ -f "$here/tests/fuzz/$target.dict" ] && dictionary=(-dict="$here/tests/fuzz/$target.dict")
  echo "== $target"
  start=$(date +%s)
  if "$build/bin/$target" "${limit[@]}" "${dictionary[@]}" -rss_limit_mb="${FUZZ_RSS_MB:-2048}" \
       -timeout="${FUZZ_TIMEOUT:-25}" -detect_leaks=0 -print_final_stats=1 -artifact_prefix="$findings/" \
       "$work" "$here/tests/fuzz/corpus/$target" > "$build/fuzz-$target.log" 2>&1; then
    result=passed
  else
    result=FAILED
    failed+=("$target")
    tail -n 40 "$build/fuzz-$target.log" >&2
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$build/fuzz-$target.log" | tail -n 1)
  echo "$target: $result, ${runs:-?} executions in $(( $(date +%s) - start )) s (log: $build/fuzz-$target.log)"
done
if [ ${#failed[@]} -gt 0 ]; then
  echo "Fuzzing found problems in: ${failed[*]}; the inputs are in $build/fuzz-findings/" >&2
  exit 1
fi
