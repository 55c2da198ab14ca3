#!/usr/bin/env bash
# Builds the fuzz targets with clang, in build-fuzz/, and runs each for some seconds, as many at once
# as there are processors.
#   scripts/fuzz.sh                20 seconds each
#   scripts/fuzz.sh 600 xml sbml   ten minutes of these
# What is found lies in build-fuzz/found; it becomes a seed in fuzz/seeds and a test by name. Inputs
# that reach something new are kept in build-fuzz/corpus for the next run.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
[ $# -eq 0 ] || shift
build=build-fuzz
cmake --preset fuzz >/dev/null
targets=()
for source in fuzz/fuzz_*.cpp; do
    target=$(basename "$source" .cpp)
    wanted=${1:-}
    [ $# -eq 0 ] || for wanted in "$@"; do [ "${target##*_}" != "$wanted" ] || break; done
    [ $# -eq 0 ] || [ "${target##*_}" = "$wanted" ] || continue
    targets+=("$target")
done
[ ${#targets[@]} -gt 0 ] || { echo "no fuzz target of these names"; exit 1; }
nice cmake --build $build -j "$(nproc)" --target "${targets[@]}" -- --quiet 2>&1 | grep -v '^\[' ||
    [ "${PIPESTATUS[0]}" = 0 ]

# The options of one run: an input may take 10 seconds and 2 GiB, more is a fault too.
fuzz_one () {            # $1: the target
    local what=${1##*_} found=build-fuzz/found/$1-
    mkdir -p "build-fuzz/corpus/$1" build-fuzz/found
    if nice "build-fuzz/fuzz/$1" -max_total_time="$FUZZ_SECONDS" -timeout=10 -rss_limit_mb=2048 \
            -max_len=20000 -artifact_prefix="$found" \
            "build-fuzz/corpus/$1" "fuzz/seeds/$what" >"build-fuzz/$1.log" 2>&1; then
        grep -E '^Done [0-9]+ runs' "build-fuzz/$1.log" | sed "s/^/$1: /"
    else
        tail -n 40 "build-fuzz/$1.log"
        echo "$1: failed, see build-fuzz/$1.log and build-fuzz/found"
        return 1
    fi
}
export -f fuzz_one
export LSAN_OPTIONS=suppressions=$PWD/scripts/leaks-of-others.txt:print_suppressions=0
export FUZZ_SECONDS=$seconds
printf '%s\n' "${targets[@]}" | xargs -n 1 -P "$(nproc)" bash -c 'fuzz_one "$0"'
