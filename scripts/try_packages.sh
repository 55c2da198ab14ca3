#!/usr/bin/env bash
# Makes the packages and tries them as a user would: the archive from an odd folder, by another user,
# without a home; the Debian packages installed, used by double clicks, and removed without a trace.
#   scripts/try_packages.sh [BUILD]     the build folder (build); what is missing there is built
# What cannot be tried here (no root, a missing tool) is told as "skipped". The last line counts.
# Installing happens on this machine; where a package ostrand is installed already, that part is
# skipped.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath "${1:-$root/build}")
work=$(mktemp -d)
chmod 755 "$work"
children=()
installed=no
cleanup () {
    local child
    for child in ${children[@]+"${children[@]}"}; do kill "$child" 2>/dev/null || true; done
    [ $installed = no ] || dpkg --purge ostrand ostrand-mpi >/dev/null 2>&1 || true
    chmod -R u+w "$work"
    rm -rf "$work"
}
trap cleanup EXIT

passed=0 failed=0 skipped=0
pass () { passed=$((passed + 1)); }
fail () { failed=$((failed + 1)); printf 'FAILED  %s\n' "$*"; }
skip () { skipped=$((skipped + 1)); printf 'skipped %s\n' "$*"; }
# try WHAT COMMAND...: the command ends well; what it printed is shown when not.
try () {
    local what=$1; shift
    if "$@" >"$work/log" 2>&1; then pass; else fail "$what"; sed 's/^/        /' "$work/log"; fi
}
has () { command -v "$1" >/dev/null 2>&1; }

# ---- making ------------------------------------------------------------------------------

make_packages () {
    cmake --build "$build" -j "$(nproc)" --target packages -- --quiet
}
rm -f "$build"/packages/ostrand*.*
try "the packages are made" make_packages
archive=$(ls "$build"/packages/ostrand-*.tar.gz)
debs=()
mapfile -t debs < <(ls "$build"/packages/*.deb 2>/dev/null)

# Packed once more, by another umask, in another time zone and language, to the same bytes.
packs_the_same () {
    (cd "$build/packages" && sha256sum ostrand*.*) >"$work/first"
    (umask 077 && cd "$build" && TZ=Pacific/Chatham LC_ALL=C cpack --config CPackConfig.cmake) || return 1
    (cd "$build/packages" && sha256sum -c "$work/first")
}
try "packing again gives the same bytes" packs_the_same

# ---- looking at them ---------------------------------------------------------------------

lintian_is_content () {
    lintian --allow-root --fail-on error,warning --tag-display-limit 0 "${debs[@]}"
}
if [ ${#debs[@]} = 0 ]; then skip "Debian packages: dpkg-deb or dpkg-shlibdeps is missing"
elif has lintian; then try "lintian has nothing to say" lintian_is_content
else skip "lintian is missing"
fi

odd="$work/Ostrand für alle"
mkdir "$odd"
tar -xzf "$archive" -C "$odd"
tree=$(echo "$odd"/ostrand-*)

no_own_path () { ! grep -aFl -e "$root" -e "$HOME/" "$tree/bin/"*; }
try "the programs name no folder of this machine" no_own_path
mandb_is_content () {
    local page
    for page in "$tree"/share/man/man1/*.gz; do
        LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null | grep . && return 1
    done
    return 0
}
if has man; then try "man pages are read without a warning" mandb_is_content
else skip "man is missing"
fi
if has appstreamcli; then
    try "the metainfo is valid" appstreamcli validate --no-net "$tree"/share/metainfo/*.xml
else skip "appstreamcli is missing"
fi
if has desktop-file-validate; then
    try "the desktop entries are valid" desktop-file-validate "$tree"/share/applications/*.desktop
else skip "desktop-file-validate is missing"
fi

# ---- the archive -------------------------------------------------------------------------

# A display for all that follows.
DISPLAY=
if has Xvfb && has xdotool; then
    number=$((1000 + $$ % 50000))
    Xvfb ":$number" -screen 0 1280x1024x24 -nolisten tcp -noreset >/dev/null 2>&1 &
    children+=($!)
    for _ in $(seq 200); do
        if DISPLAY=:$number xdotool getdisplaygeometry >/dev/null 2>&1; then DISPLAY=:$number; break; fi
        sleep 0.05
    done
fi
export DISPLAY LIBGL_ALWAYS_SOFTWARE=1

# waits_for_window TITLE: a window whose title begins so comes within 15 seconds.
waits_for_window () {
    for _ in $(seq 150); do
        xdotool search --onlyvisible --name "^$1" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    echo "no window '$1'; there are:"
    xdotool search --onlyvisible --name . getwindowname %@ || true
    return 1
}
# shows TITLE COMMAND...: the command opens a window of that title, and is ended then.
shows () {
    local title=$1 status=0 child; shift
    setsid "$@" &
    child=$!
    waits_for_window "$title" || status=1
    kill -- "-$child" 2>/dev/null || true
    wait "$child" 2>/dev/null || true
    for _ in $(seq 50); do
        xdotool search --onlyvisible --name "^$title" >/dev/null 2>&1 || break
        sleep 0.1
    done
    return $status
}

home="$work/home"
mkdir -m 777 "$home"
examples=$tree/share/ostrand/examples
try "archive: version" "$tree/bin/ostrand" --version
try "archive: converts" "$tree/bin/ostrand-tool" convert "$examples/hexokinase.net" "$work/h.svg"
try "archive: simulates" "$tree/bin/ostrand" -a "$examples/glucose-sweep.ssa" -o "$work/s.result.gz"
if [ -n "$DISPLAY" ]; then
    try "archive: shows curves" env OSTRAND_PICTURE="$work/curves.png" "$tree/bin/ostrand" -v "$work/s.result.gz"
    try "archive: there is a picture" test -s "$work/curves.png"
    try "archive: edits" shows hexokinase.net env HOME="$home" "$tree/bin/ostrand" "$examples/hexokinase.net"
else
    skip "windows: Xvfb or xdotool is missing"
fi

# Another user: nobody, where we are root.
if [ "$(id -u)" = 0 ] && has runuser && id nobody >/dev/null 2>&1; then
    chmod a+r "$work/s.result.gz"
    mkdir -m 555 "$work/fixed-home"
    mkdir -m 777 "$work/free"
    as_nobody () { (cd "$work/free" && runuser -u nobody -- env HOME="$work/fixed-home" "$@"); }
    free_home () { (cd "$work/free" && runuser -u nobody -- env HOME="$work/free" "$@"); }
    try "another user: converts" as_nobody "$tree/bin/ostrand-tool" convert "$examples/hexokinase.net" h.svg
    try "another user: simulates" as_nobody "$tree/bin/ostrand" -a "$examples/glucose-sweep.ssa"
    try "another user: there is a result" test -s "$work/free/data.gz"
    # The editor keeps its history in the home: without one it says so and ends with status 1.
    word_without_home () {
        local status=0
        as_nobody timeout 20 "$tree/bin/ostrand" "$examples/hexokinase.net" >"$work/words" 2>&1 || status=$?
        cat "$work/words"
        [ $status = 1 ] && [ -s "$work/words" ]
    }
    # The doctor tells of the home, and nothing breaks.
    doctor_tells_home () {
        local status=0
        as_nobody "$tree/bin/ostrand-tool" doctor >"$work/words" 2>&1 || status=$?
        cat "$work/words"
        [ $status = 1 ] && grep -q "$work/fixed-home" "$work/words"
    }
    try "a home that cannot be written: the doctor tells" doctor_tells_home
    if [ -n "$DISPLAY" ]; then
        try "a home that cannot be written: a word from the editor, no crash" word_without_home
        try "another user: edits" shows hexokinase.net runuser -u nobody -- \
            env HOME="$work/free" "$tree/bin/ostrand" "$examples/hexokinase.net"
        try "a home that cannot be written: curves all the same" \
            as_nobody env OSTRAND_PICTURE="$work/free/curves.png" "$tree/bin/ostrand" -v data.gz
    fi
else
    skip "another user: not root, or no user nobody"
fi

# ---- the Debian packages -----------------------------------------------------------------

# All that the installation of a package may leave, but for logs and caches of the system.
traces () {
    find /usr /etc /opt /var/lib -xdev \( -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/lib/systemd \
        -o -name '*.pyc' -o -name __pycache__ \) -prune -o -print 2>/dev/null | LC_ALL=C sort
    cksum /usr/share/applications/mimeinfo.cache /usr/share/mime/globs2 /usr/share/mime/magic 2>/dev/null || true
}

if [ ${#debs[@]} = 0 ]; then :
elif [ "$(id -u)" != 0 ]; then skip "installing: not root"
elif dpkg-query -W ostrand >/dev/null 2>&1; then skip "installing: a package ostrand is here already"
else
    ! has update-desktop-database || update-desktop-database -q
    traces >"$work/before"
    installed=yes
    try "the packages are installed" dpkg -i "${debs[@]}"
    try "installed: version" ostrand --version
    try "installed: version of the companion" ostrand-tool --version
    [ ${#debs[@]} = 1 ] || try "installed: ranks" env OMPI_ALLOW_RUN_AS_ROOT=1 \
        OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 ostrand-mpi --version
    ! has man || try "installed: man page" man -w ostrand
    if [ -n "$DISPLAY" ]; then
        mkdir -p "$home/doctor" "$home/opened"
        try "installed: the doctor is content" env HOME="$home/doctor" ostrand-tool doctor
        if has gio && has xdg-open && has xdg-mime; then
            here=/usr/share/ostrand/examples
            cp $here/hexokinase.net "$home/opened/network.net"
            cp $here/hexokinase.net "$home/opened/old.mto"
            cp $here/hexokinase.net "$home/opened/without-suffix"
            cp $here/glucose-sweep.ssa "$home/opened/model.ssa"
            cp $here/tca-shuttles.xml "$home/opened/model.sbml"
            cp "$work/s.result.gz" "$home/opened/data.gz"
            cp "$work/s.result.gz" "$home/opened/curves.result.gz"
            # opens FILE ENTRY TITLE: the desktop has this entry for the file, and a double click
            # shows a window of that title.
            opens () {
                local file=$home/opened/$1 kind own status=0 id
                own=$(mktemp -d "$home/XXXXXX")
                export HOME=$own XDG_CURRENT_DESKTOP=GNOME
                kind=$(xdg-mime query filetype "$file")
                echo "$1 is $kind, opened by $(xdg-mime query default "$kind")"
                [ "$(xdg-mime query default "$kind")" = "$2" ] || return 1
                xdg-open "$file" || return 1
                waits_for_window "$3" || status=1
                for id in $(xdotool search --onlyvisible --name "^$3" getwindowpid 2>/dev/null); do
                    # Ours only: the display is this script's own.
                    kill "$id" 2>/dev/null || true
                done
                for _ in $(seq 50); do
                    xdotool search --onlyvisible --name "^$3" >/dev/null 2>&1 || break
                    sleep 0.1
                done
                return $status
            }
            try "double click: .net" opens network.net ostrand.desktop network.net
            try "double click: .mto" opens old.mto ostrand.desktop old.mto
            try "double click: native text without a suffix" opens without-suffix ostrand.desktop without-suffix
            try "double click: model" opens model.ssa ostrand.desktop model
            try "double click: SBML" opens model.sbml ostrand.desktop model
            try "double click: data.gz" opens data.gz ostrand-viewer.desktop Stochora
            try "double click: .result.gz" opens curves.result.gz ostrand-viewer.desktop Stochora
        else
            skip "double clicks: gio, xdg-open or xdg-mime is missing"
        fi
    fi
    try "the packages are purged" dpkg --purge "$(basename "${debs[0]%%_*}")" \
        $([ ${#debs[@]} = 1 ] || basename "${debs[1]%%_*}")
    installed=no
    leaves_nothing () { traces >"$work/after"; diff "$work/before" "$work/after"; }
    try "nothing is left behind" leaves_nothing
fi

if [ $skipped != 0 ]; then echo "$passed passed, $failed failed, $skipped skipped"
else echo "$passed passed, $failed failed"
fi
[ $failed = 0 ]
