#!/usr/bin/env bash
# Takes the pictures of the manual again: windows of the built program on displays without a screen.
# Builds nothing; what it runs is made by
#   cmake --build build --target program_startup --target manual_pictures
#   scripts/take_manual_pictures.sh [FOLDER [light|dark ...]]     else assets/manual, both grounds
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
folder=${1:-$root/assets/manual}
shift || true
[ $# -gt 0 ] || set -- light dark
build=${OSTRAND_BUILD:-$root/build}
for tool in Xvfb xdotool "$build/ostrand" "$build/tests/manual_pictures"; do
    command -v "$tool" >/dev/null || { echo "take_manual_pictures: there is no $tool" >&2; exit 1; }
done
# All side by side: the programs mostly wait for each other.
running=()
for ground in "$@"; do
    for what in parts windows; do
        "$build/tests/manual_pictures" "$folder" $what "$ground" &
        running+=($!)
    done
done
failed=0
for one in "${running[@]}"; do wait "$one" || failed=1; done
exit $failed
