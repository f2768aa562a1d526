# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by run, test and measure: what each job needs, and how it gets onto the machine.
# A line is PACKAGE PROBE: the Debian package, and the program or file that shows it is there.

needs_build='
g++ g++
cmake cmake
ninja-build ninja
libcli11-dev /usr/include/CLI/CLI.hpp
zlib1g-dev /usr/include/zlib.h
libsqlite3-dev /usr/include/sqlite3.h
pkg-config pkg-config
libxcb-icccm4-dev /usr/include/xcb/xcb_icccm.h
libxcb-cursor-dev /usr/include/xcb/xcb_cursor.h
libxcb-xkb-dev /usr/include/xcb/xkb.h
libxkbcommon-x11-dev /usr/include/xkbcommon/xkbcommon-x11.h
libpango1.0-dev /usr/include/pango-1.0/pango/pangocairo.h
fonts-dejavu-core /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
'
needs_test='
googletest /usr/src/googletest/CMakeLists.txt
libxcb-xtest0-dev /usr/include/xcb/xtest.h
gdb gdb
libfmt-dev /usr/include/fmt/format.h
unzip unzip
zip zip
groff-base groff
zsh zsh
locales /usr/share/i18n/locales/de_DE
'
needs_all='
ccache ccache
clang-14 clang++-14
libclang-rt-14-dev /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a
g++-mingw-w64-x86-64-posix x86_64-w64-mingw32-g++-posix
libz-mingw-w64-dev /usr/x86_64-w64-mingw32/lib/libz.a
g++-mingw-w64-i686-posix i686-w64-mingw32-g++-posix
wine wine
wine64 /usr/lib/wine/wine64
xvfb Xvfb
xauth xauth
xdotool xdotool
doxygen doxygen
'

# What counts the lines that ran.
needs_coverage='
gcovr gcovr
'

# What the library is measured against, and what makes the things to measure with.
needs_measure='
libbenchmark-dev /usr/include/benchmark/benchmark.h
python3 python3
qtbase5-dev /usr/include/x86_64-linux-gnu/qt5/QtCore/QtCore
libwxgtk3.2-dev wx-config
libabsl-dev /usr/include/absl/strings/str_split.h
libboost-dev /usr/include/boost/container/flat_map.hpp
libmimalloc-dev /usr/lib/x86_64-linux-gnu/libmimalloc.so
libjemalloc-dev /usr/lib/x86_64-linux-gnu/libjemalloc.so
libglib2.0-dev /usr/include/glib-2.0/glib.h
libicu-dev /usr/include/unicode/ucnv.h
libzip-dev /usr/include/zip.h
libminizip-dev /usr/include/minizip/unzip.h
libarchive-dev /usr/include/archive.h
libarchive-tools bsdtar
unzip unzip
flex flex
unrtf unrtf
unifdef unifdef
'

# need LIST...: installs the packages of these lists whose probes fail; stops when it cannot.
need() {
    local package probe missing=() sudo=()
    while read -r package probe; do
        case $probe in
        '') continue ;;
        /*) [ -e "$probe" ] || missing+=("$package") ;;
        *) command -v "$probe" >/dev/null || missing+=("$package") ;;
        esac
    done <<<"$*"
    [ ${#missing[@]} -gt 0 ] || return 0

    if ! command -v apt-get >/dev/null; then
        echo "missing, please install (Debian's names): ${missing[*]}" >&2
        exit 1
    fi
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "missing, please install as root: ${missing[*]}" >&2
            exit 1
        fi
        sudo=(sudo)
    fi
    echo "installing: ${missing[*]}" >&2
    local log
    log=$(mktemp)
    if ! { "${sudo[@]}" apt-get update -qq &&
        "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
            -o DPkg::Lock::Timeout=300 --no-install-recommends "${missing[@]}"; } \
        >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        rm -f "$log"
        echo "these packages could not be installed: ${missing[*]}" >&2
        exit 1
    fi
    rm -f "$log"
}

# quietly NAME COMMAND...: keeps the output in a log and shows it only when the command fails.
quietly() {
    local log=$root/build/log/$1
    shift
    mkdir -p "$root/build/log"
    "$@" >"$log" 2>&1 </dev/null || { cat "$log" >&2; exit 1; }
}

# A clone in another folder finds what an earlier one compiled.
prepare_environment() {
    export PATH="${PATH:-/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin}"
    export HOME="${HOME:-$root/build/home}"
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
    export LC_ALL=C.UTF-8
    jobs=$(nproc)
}
