#!/usr/bin/env bash
# Sets up, builds and runs all tests. The last line tells how many passed and failed.
#   ./test.sh            the release build, in build/
#   ./test.sh asan       the same suite under another preset (debug, asan, tsan)
#   ./test.sh asan -R x  words behind the preset go to ctest
# With OSTRAND_TARGETS="sim_tests gates_tests" only these are built.
set -euo pipefail
cd "$(dirname "$0")"
preset=${1:-release}
[ $# -gt 0 ] && shift
scripts/setup.sh
build=build
[ "$preset" = release ] || build=build-$preset
jobs=$(nproc)
strict=OFF
[ -n "${CI:-}" ] && strict=ON
cmake --preset "$preset" -DOSTRAND_WARNINGS_AS_ERRORS=$strict >"/tmp/ostrand-configure.$$" 2>&1 ||
    { cat "/tmp/ostrand-configure.$$"; exit 1; }
rm -f "/tmp/ostrand-configure.$$"
targets=()
# shellcheck disable=SC2206  # a list of words
[ -z "${OSTRAND_TARGETS:-}" ] || targets=(--target $OSTRAND_TARGETS)
cmake --build "$build" -j "$jobs" ${targets[@]+"${targets[@]}"} -- --quiet 2>&1 | grep -v '^\[' || [ "${PIPESTATUS[0]}" = 0 ]

export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$PWD/scripts/leaks-of-others.txt:print_suppressions=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
log=$build/ctest.log
status=0
ctest --test-dir "$build" -j "$jobs" --output-on-failure "$@" >"$log" 2>&1 || status=$?
# Failed cases with what they printed; a run in which all passed needs no more than its count.
[ $status = 0 ] || grep -vE '^ *Start +[0-9]+:|Passed +[0-9.]+ sec$' "$log" || true
passed=$(grep -cE '\.+ +Passed +[0-9.]+ sec' "$log" || true)
skipped=$(grep -cE '\*\*\*Skipped' "$log" || true)
total=$(sed -nE 's/.* tests failed out of ([0-9]+)$/\1/p' "$log" | tail -n 1)
failed=$((${total:-0} - passed - skipped))
if [ "${total:-0}" = 0 ]; then failed=1; echo "no test was run, see $log"; fi
grep -E '^Total Test time' "$log" || true
if [ "$skipped" != 0 ]; then
    echo "$passed passed, $failed failed, $skipped skipped"
else
    echo "$passed passed, $failed failed"
fi
[ "$status" = 0 ] && [ "$failed" = 0 ]
