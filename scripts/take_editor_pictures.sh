#!/usr/bin/env bash
# Takes the pictures of the editor in docs/editor/ again, on a display without a screen.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset release >/dev/null
cmake --build build -j "$(nproc)" --target program_startup --target editor_pictures -- --quiet
build/tests/editor_pictures docs/editor
