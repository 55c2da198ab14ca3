#!/usr/bin/env bash
# clang-tidy with the checks of .clang-tidy on the headers of src and on the source files that changed.
# Tests are left out: each takes four times as long as a file of the program, and runs under the
# sanitizers anyway. So are benchmarks, whose loops look like dead stores.
#   scripts/lint.sh              what changed since the branch left main; on main itself, its last commits
#   scripts/lint.sh all          every source file of the program
#   scripts/lint.sh FILE...      these files
# LINT_SECONDS bounds the time that it takes (default 300): files that were not reached are named.
# Compile commands come from build/, which is configured, not built.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build
last_commits=10
seconds=${LINT_SECONDS:-300}
[ -e $build/compile_commands.json ] || cmake --preset release >/dev/null

# Where the changes begin: the last commit that is on main too.
base_of_changes () {
    local main base
    for main in origin/main main; do
        base=$(git merge-base HEAD "$main" 2>/dev/null) || continue
        [ "$base" = "$(git rev-parse HEAD)" ] || { echo "$base"; return; }
    done
    git rev-list --first-parent --max-count=$((last_commits + 1)) HEAD | tail -n 1
}

# Changed source files, the latest change first.
changed_files () {
    local base
    base=$(base_of_changes)
    {
        git diff --name-only --diff-filter=d HEAD
        git log --format= --name-only --diff-filter=d "$base..HEAD"
    } | awk '!seen[$0]++' >"$work/changed"
    { grep -E '^src/.*\.cpp$' "$work/changed" || true; } | those_that_exist
}
those_that_exist () { while read -r file; do [ ! -e "$file" ] || echo "$file"; done; }

# One file a folder of src that includes all of its headers, so that each header is looked at, and once.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
header_files () {
    local folder
    for folder in src/*/; do
        folder=$(basename "$folder")
        compgen -G "src/$folder/*.h" >/dev/null || continue
        (cd src && printf '#include "%s"\n' "$folder"/*.h) >"$work/headers_of_$folder.cpp"
        echo "$work/headers_of_$folder.cpp"
    done
}

# Folders of headers from other places, as the compiler is told of them.
includes=$(grep -ohE -- '-(I|isystem) ?[^ ]+' $build/compile_commands.json | grep -vE "$PWD/(build|tests)" | sort -u | tr '\n' ' ')

lint_one () {            # $1: the file
    if [ "$(date +%s)" -ge "$LINT_END" ]; then echo "$1" >>"$LINT_WORK/not_reached"; return; fi
    local flags=(-p "$LINT_BUILD")
    case $1 in "$LINT_WORK"/*) flags=() ;; esac
    # shellcheck disable=SC2086  # a list of words
    if [ ${#flags[@]} = 0 ]; then
        nice clang-tidy --quiet "$1" -- -std=c++20 $LINT_INCLUDES
    else
        nice clang-tidy --quiet "${flags[@]}" "$1"
    fi >"$LINT_WORK/out.$$" 2>"$LINT_WORK/err.$$" && return
    cat "$LINT_WORK/out.$$"
    grep -v 'warnings generated' "$LINT_WORK/err.$$" || true
    echo "$1" >>"$LINT_WORK/failed"
}
export -f lint_one
export LINT_WORK=$work LINT_BUILD=$build LINT_INCLUDES=$includes LINT_END=$(($(date +%s) + seconds))

case ${1:-} in
    "")  { header_files; changed_files; } ;;
    all) { header_files; git ls-files 'src/*.cpp'; } ;;
    *)   printf '%s\n' "$@" ;;
esac >"$work/list"
: >"$work/not_reached"
xargs -r -d '\n' -n 1 -P "$(nproc)" bash -c 'lint_one "$0"' <"$work/list"
total=$(wc -l <"$work/list")
not_reached=$(wc -l <"$work/not_reached")
if [ "$not_reached" != 0 ]; then
    echo "not reached within $seconds seconds (scripts/lint.sh FILE... looks at them):"
    sort "$work/not_reached"
fi
echo "$((total - not_reached)) of $total files looked at"
[ ! -e "$work/failed" ]
