#!/usr/bin/env bash
# Sets up, builds and runs Ostrand.
#   ./run.sh            the main job: simulates the shipped sweep, shows its curves and opens a network
#                       in the editor; without a display, a picture of the curves
#   ./run.sh WORDS...   runs the program on these words, as build/ostrand WORDS... would
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)
here=$PWD
cd "$root"
scripts/setup.sh
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { cmake --preset release >"$log" 2>&1 && cmake --build build -j "$(nproc)" \
           --target program_startup --target program_tool >>"$log" 2>&1; }; then
    cat "$log" >&2
    exit 1
fi

if [ $# -gt 0 ]; then
    cd "$here"
    rm -f "$log"
    exec "$root/build/ostrand" "$@"
fi

model=examples/glucose-sweep.ssa
result=build/glucose-sweep.gz
build/ostrand -a "$model" -o "$result"
echo "Simulated $model: 60 s of the first steps of glycolysis at five amounts of glucose."
echo "The result is in $result."
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    # The curves in one window, a network to draw on in another.
    build/ostrand -v "$result" &
    viewer=$!
    if build/ostrand "$root/examples/upper-glycolysis.net" && wait "$viewer"; then
        exit 0
    fi
    wait "$viewer" 2>/dev/null || true
fi
picture=build/glucose-sweep.png
OSTRAND_PICTURE=$picture scripts/with-display.sh build/ostrand -v "$result"
echo "There is no display; a picture of its curves is in $picture."
