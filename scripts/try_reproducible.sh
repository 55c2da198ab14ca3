#!/usr/bin/env bash
# Proves that a commit makes the same packages wherever and whenever it is built: clones it into two
# folders of different names, builds the packages in each from nothing (no compiler cache, another
# umask, time zone, language and number of jobs) and compares their bytes. Takes as long as two builds.
#   scripts/try_reproducible.sh [COMMIT]     HEAD without one
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
commit=$(git -C "$root" rev-parse --verify "${1:-HEAD}^{commit}")
SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH CCACHE_DISABLE=1
unset CMAKE_CXX_COMPILER_LAUNCHER
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

build_in () {            # $1: the folder's name, $2: jobs
    git clone -q --no-hardlinks "$root" "$work/$1"
    git -C "$work/$1" checkout -q "$commit"
    (cd "$work/$1" && cmake --preset package && cmake --build build-package -j "$2" --target packages) \
        >"$work/$1.log" 2>&1 || { tail -n 30 "$work/$1.log"; exit 1; }
    (cd "$work/$1/build-package/packages" && sha256sum ostrand*.*) >"$work/$1.sums"
}
(umask 022; build_in one "$(nproc)")
(umask 077; export TZ=Pacific/Chatham LC_ALL=C; build_in "another folder" 3)
cat "$work/one.sums"
diff "$work/one.sums" "$work/another folder.sums" || { echo "the packages differ"; exit 1; }
echo "Both builds of $commit made the same $(wc -l <"$work/one.sums") packages."
