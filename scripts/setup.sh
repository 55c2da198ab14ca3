#!/usr/bin/env bash
# Installs what Ostrand needs to build, test and run, and gets FLTK 1.4.
# Safe to call again: when everything is there it answers in well under a second.
#   scripts/setup.sh --checks   also what .ci/run needs beside: clang-tidy, clang for the fuzz targets,
#                               what tries the packages, and a browser for the saved manual
set -euo pipefail

say () { printf 'setup: %s\n' "$*" >&2; }
die () { say "$*"; exit 1; }

deps=${OSTRAND_DEPS:-${XDG_CACHE_HOME:-$HOME/.cache}/ostrand}
fltk_prefix=$deps/fltk-1.4
with_checks=no
[ "${1:-}" != --checks ] || with_checks=yes

# One line for each need: what to look for (a command, a header or a file), then the
# package that brings it on Debian, Fedora and Arch.
needs () {
    cat <<'TABLE'
cmd:g++                         g++                     gcc-c++               gcc
cmd:cmake                       cmake                   cmake                 cmake
cmd:make                        make                    make                  make
cmd:pkg-config                  pkg-config              pkgconf-pkg-config    pkgconf
cmd:clang-format                clang-format            clang-tools-extra     clang
cmd:Xvfb                        xvfb                    xorg-x11-server-Xvfb  xorg-server-xvfb
cmd:xdotool                     xdotool                 xdotool               xdotool
cmd:xclip                       xclip                   xclip                 xclip
cmd:gzip                        gzip                    gzip                  gzip
cmd:rsvg-convert                librsvg2-bin            librsvg2-tools        librsvg
cmd:pdftoppm                    poppler-utils           poppler-utils         poppler
cmd:xmllint                     libxml2-utils           libxml2               libxml2
cmd:tidy                        tidy                    tidy                  tidy
inc:gtest/gtest.h               libgtest-dev            gtest-devel           gtest
inc:gmock/gmock.h               libgmock-dev            gmock-devel           gtest
inc:benchmark/benchmark.h       libbenchmark-dev        google-benchmark-devel benchmark
inc:zlib.h                      zlib1g-dev              zlib-devel            zlib
inc:png.h                       libpng-dev              libpng-devel          libpng
inc:jpeglib.h                   libjpeg-dev             libjpeg-turbo-devel   libjpeg-turbo
inc:hpdf.h                      libhpdf-dev             libharu-devel         libharu
inc:hwy/highway.h               libhwy-dev              highway-devel         highway
cmd:mpicxx                      libopenmpi-dev          openmpi-devel         openmpi
cmd:mpirun                      openmpi-bin             openmpi               openmpi
inc:graphviz/gvc.h              libgraphviz-dev         graphviz-devel        graphviz
inc:sbml/SBMLTypes.h            libsbml5-dev            libsbml-devel         libsbml
inc:librsvg-2.0/librsvg/rsvg.h  librsvg2-dev            librsvg2-devel        librsvg
inc:GL/gl.h                     libgl-dev               mesa-libGL-devel      mesa
inc:GL/glu.h                    libglu1-mesa-dev        mesa-libGLU-devel     glu
inc:X11/Xlib.h                  libx11-dev              libX11-devel          libx11
inc:X11/extensions/Xext.h       libxext-dev             libXext-devel         libxext
inc:X11/Xft/Xft.h               libxft-dev              libXft-devel          libxft
inc:X11/extensions/Xinerama.h   libxinerama-dev         libXinerama-devel     libxinerama
inc:X11/Xcursor/Xcursor.h       libxcursor-dev          libXcursor-devel      libxcursor
inc:X11/extensions/Xrender.h    libxrender-dev          libXrender-devel      libxrender
inc:X11/extensions/Xfixes.h     libxfixes-dev           libXfixes-devel       libxfixes
lib:dri/swrast_dri.so           libgl1-mesa-dri         mesa-dri-drivers      mesa
lib:libEGL.so.1                 libegl1                 libglvnd-egl          libglvnd
lib:libEGL_mesa.so.0            libegl-mesa0            mesa-libEGL           mesa
font:LiberationSans-Regular.ttf fonts-liberation        liberation-sans-fonts ttf-liberation
font:DejaVuSans.ttf             fonts-dejavu-core       dejavu-sans-fonts     ttf-dejavu
TABLE
    # What only Debian needs, for its packages.
    [ ! -e /etc/debian_version ] || echo 'cmd:dpkg-shlibdeps dpkg-dev - -'
    [ $with_checks = no ] || cat <<'TABLE'
cmd:clang-tidy                  clang-tidy              clang-tools-extra     clang
cmd:clang++                     clang                   clang                 clang
clang:libclang_rt.fuzzer        libclang-rt-dev         compiler-rt           compiler-rt
cmd:desktop-file-validate       desktop-file-utils      desktop-file-utils    desktop-file-utils
cmd:appstreamcli                appstream               appstream             appstream
cmd:update-mime-database        shared-mime-info        shared-mime-info      shared-mime-info
cmd:gio                         libglib2.0-bin          glib2                 glib2
cmd:xdg-open                    xdg-utils               xdg-utils             xdg-utils
cmd:chromium                    chromium                chromium              chromium
cmd:fish                        fish                    fish                  fish
cmd:zsh                         zsh                     zsh                   zsh
TABLE
    [ $with_checks = no ] || [ ! -e /etc/debian_version ] || cat <<'TABLE'
cmd:lintian                     lintian                 -                     -
TABLE
}

found () {
    case $1 in
        cmd:*)  command -v "${1#cmd:}" >/dev/null 2>&1 ;;
        inc:*)  [ -e "/usr/include/${1#inc:}" ] || [ -e "/usr/local/include/${1#inc:}" ] ||
                compgen -G "/usr/include/*-linux-gnu*/${1#inc:}" >/dev/null ;;
        lib:*)  compgen -G "/usr/lib/${1#lib:}" >/dev/null ||
                compgen -G "/usr/lib64/${1#lib:}" >/dev/null ||
                compgen -G "/usr/lib/*-linux-gnu*/${1#lib:}" >/dev/null ;;
        clang:*) compgen -G "/usr/lib*/llvm*/lib/clang/*/lib/*/${1#clang:}*" >/dev/null ||
                compgen -G "/usr/lib*/clang/*/lib/*/${1#clang:}*" >/dev/null ;;
        font:*) [ -n "$(find /usr/share/fonts /usr/local/share/fonts "$HOME/.local/share/fonts" \
                        -name "${1#font:}" -print -quit 2>/dev/null)" ] ;;
    esac
}

run_as_root () {
    if [ "$(id -u)" = 0 ]; then "$@"
    elif command -v sudo >/dev/null 2>&1; then sudo "$@"
    else return 1
    fi
}

can_be_root () { [ "$(id -u)" = 0 ] || command -v sudo >/dev/null 2>&1; }

# ---- system packages ---------------------------------------------------------------------

missing_of_column () {   # $1: the column of the package manager, 2 to 4
    needs | while read -r what debian fedora arch; do
        found "$what" && continue
        case $1 in 2) echo "$debian" ;; 3) echo "$fedora" ;; 4) echo "$arch" ;; esac
    done
}

install_packages () {
    local manager column
    if   command -v apt-get >/dev/null 2>&1; then manager=apt;    column=2
    elif command -v dnf     >/dev/null 2>&1; then manager=dnf;    column=3
    elif command -v pacman  >/dev/null 2>&1; then manager=pacman; column=4
    else                                          manager=none;   column=2
    fi
    local missing
    missing=$(missing_of_column $column | sort -u | tr '\n' ' ')
    [ -z "${missing// /}" ] && return 0
    if [ $manager = none ]; then
        say "no package manager that this script knows (apt-get, dnf, pacman)."
        say "please install these, named as Debian names them: $missing"
        exit 1
    fi
    if ! can_be_root; then
        say "neither root nor sudo: please have these packages installed: $missing"
        exit 1
    fi
    say "installing: $missing"
    # shellcheck disable=SC2086  # a list of words
    case $manager in
        apt)    run_as_root apt-get update -qq >&2
                run_as_root env DEBIAN_FRONTEND=noninteractive \
                    apt-get install -y -qq --no-install-recommends $missing >&2 ;;
        dnf)    run_as_root dnf install -y $missing >&2 ;;
        pacman) run_as_root pacman -Sy --needed --noconfirm $missing >&2 ;;
    esac
}

# ---- FLTK 1.4 ----------------------------------------------------------------------------

version_is_1_4 () {      # $1: a version as printed by fltk-config or the package manager
    case $1 in 1.[4-9]*|[2-9].*) return 0 ;; *) return 1 ;; esac
}

fltk_is_there () {
    [ -e "$fltk_prefix/share/fltk/FLTKConfig.cmake" ] && return 0
    [ -e "$fltk_prefix/lib/cmake/FLTK/FLTKConfig.cmake" ] && return 0
    command -v fltk-config >/dev/null 2>&1 && version_is_1_4 "$(fltk-config --version)"
}

fltk_from_package () {
    can_be_root || return 1
    if command -v apt-get >/dev/null 2>&1; then
        [ -n "$(apt-cache policy libfltk1.4-dev 2>/dev/null | sed -n 's/ *Candidate: \([^(].*\)/\1/p')" ] || return 1
        run_as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends libfltk1.4-dev >&2
    elif command -v dnf >/dev/null 2>&1; then
        run_as_root dnf install -y 'fltk-devel >= 1.4' >&2
    elif command -v pacman >/dev/null 2>&1; then
        version_is_1_4 "$(pacman -Si fltk 2>/dev/null | sed -n 's/^Version *: *//p')" || return 1
        run_as_root pacman -S --needed --noconfirm fltk >&2
    else
        return 1
    fi
}

# The mirror and the keyring of this machine's own Debian sources: prints "URI KEYRING".
debian_mirror () {
    local file uri='' key=/usr/share/keyrings/debian-archive-keyring.gpg
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -e "$file" ] || continue
        uri=$(awk '
            /^[ \t]*$/ { if (deb && main) { print u; exit } deb = main = 0; u = ""; next }
            tolower ($1) == "types:"      { deb = /deb/ }
            tolower ($1) == "components:" { main = / main( |$)/ }
            tolower ($1) == "uris:"       { u = $2 }
            tolower ($1) == "suites:" && /security/ { deb = 0 }
            END { if (deb && main && u) print u }' "$file" | head -n 1)
        if [ -n "$uri" ]; then
            local k
            k=$(awk 'tolower ($1) == "signed-by:" { print $2; exit }' "$file")
            [ -n "$k" ] && [ -e "$k" ] && key=$k
            break
        fi
    done
    if [ -z "$uri" ]; then
        uri=$(cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
              sed -E 's/^deb +\[[^]]*\] +/deb /' |
              awk '$1 == "deb" && $3 !~ /security/ && / main( |$)/ { print $2; exit }')
    fi
    [ -n "$uri" ] || return 1
    printf '%s %s\n' "$uri" "$key"
}

fltk_from_source () {
    command -v apt-get >/dev/null 2>&1 || return 1
    if ! command -v dpkg-source >/dev/null 2>&1; then
        can_be_root || die "please have the package dpkg-dev installed"
        run_as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends dpkg-dev >&2
    fi
    local mirror keyring work suite apt_options
    read -r mirror keyring < <(debian_mirror) || die "no Debian mirror in this machine's apt sources"
    work=$(mktemp -d)
    # shellcheck disable=SC2064  # the folder of now
    trap "rm -rf '$work'" EXIT
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/source"
    apt_options=(-o "Dir::Etc::sourcelist=$work/sources.list" -o Dir::Etc::sourceparts=-
                 -o "Dir::State::lists=$work/lists" -o "Dir::Cache=$work/cache"
                 -o APT::Sandbox::User=root)
    say "fetching the source package of FLTK 1.4"
    for suite in trixie forky sid; do
        printf 'deb-src [signed-by=%s] %s %s main\n' "$keyring" "$mirror" "$suite" >"$work/sources.list"
        rm -rf "${work:?}/source"; mkdir -p "$work/source"
        apt-get "${apt_options[@]}" update -qq >"$work/log" 2>&1 || continue
        if (cd "$work/source" && apt-get "${apt_options[@]}" source -qq "fltk1.4/$suite" >>"$work/log" 2>&1); then
            break
        fi
    done
    local tree
    tree=$(find "$work/source" -mindepth 1 -maxdepth 1 -type d | head -n 1)
    if [ -z "$tree" ]; then cat "$work/log" >&2; die "the source package of FLTK 1.4 could not be fetched"; fi
    say "building $(basename "$tree") into $fltk_prefix (once, about a minute)"
    mkdir -p "$deps"
    cmake -S "$tree" -B "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$fltk_prefix" \
          -DFLTK_BUILD_SHARED_LIBS=OFF -DFLTK_BUILD_FLUID=OFF -DFLTK_BUILD_FLTK_OPTIONS=OFF \
          -DFLTK_BUILD_TEST=OFF -DFLTK_BUILD_EXAMPLES=OFF -DFLTK_BACKEND_WAYLAND=OFF \
          -DFLTK_BUILD_HTML_DOCS=OFF -DFLTK_BUILD_PDF_DOCS=OFF -DFLTK_BUILD_GL=ON \
          -DFLTK_USE_SYSTEM_LIBPNG=ON -DFLTK_USE_SYSTEM_LIBJPEG=ON -DFLTK_USE_SYSTEM_ZLIB=ON \
          >"$work/log" 2>&1 &&
    cmake --build "$work/build" -j "$(nproc)" >>"$work/log" 2>&1 &&
    rm -rf "$fltk_prefix" "$fltk_prefix.part" &&
    cmake --install "$work/build" --prefix "$fltk_prefix.part" >>"$work/log" 2>&1 &&
    mv "$fltk_prefix.part" "$fltk_prefix" ||
        { tail -n 40 "$work/log" >&2; die "FLTK 1.4 could not be built"; }
}

# Under one lock, so that two builds that start together fetch and build FLTK once.
mkdir -p "$deps"
exec 9>"$deps/lock"
flock 9 2>/dev/null || true
install_packages
if ! fltk_is_there; then
    fltk_from_package || fltk_from_source || die "FLTK 1.4 or later is needed: please install it"
fi
