#!/usr/bin/env bash
# Runs a command on a virtual display of its own, which goes with it.
#   scripts/with-display.sh COMMAND [ARG ...]
set -euo pipefail
# A number that no other run uses: a server that ends takes its number's socket away, also from a
# successor that was given the same number meanwhile.
number=$((1000 + $$ % 50000))
Xvfb ":$number" -screen 0 1920x1200x24 -nolisten tcp -noreset >/dev/null 2>&1 &
server=$!
trap 'kill $server 2>/dev/null; wait $server 2>/dev/null || true' EXIT
for _ in $(seq 400); do
    DISPLAY=:$number xdotool getdisplaygeometry >/dev/null 2>&1 && break
    kill -0 $server 2>/dev/null || { echo "with-display: no virtual display could be started" >&2; exit 1; }
    sleep 0.05
done
DISPLAY=:$number LIBGL_ALWAYS_SOFTWARE=1 "$@"
