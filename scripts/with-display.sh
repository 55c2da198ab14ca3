#!/usr/bin/env bash
# Runs a command on a virtual display of its own, which goes with it.
#   scripts/with-display.sh COMMAND [ARG ...]
set -euo pipefail
ready=$(mktemp)
Xvfb -displayfd 3 -screen 0 1920x1200x24 -nolisten tcp 3>"$ready" >/dev/null 2>&1 &
server=$!
trap 'kill $server 2>/dev/null; rm -f "$ready"' EXIT
for _ in $(seq 100); do
    [ -s "$ready" ] && break
    kill -0 $server 2>/dev/null || { echo "with-display: no virtual display could be started" >&2; exit 1; }
    sleep 0.05
done
DISPLAY=:$(cat "$ready") LIBGL_ALWAYS_SOFTWARE=1 "$@"
