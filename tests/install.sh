#!/bin/sh
# Installs a build into a root of its own, twice: with cmake, and as the Debian package. Builds the example hosts against
# each, once found by cmake and once by pkg-config, and has them count the classes of an example and tell where they
# come from.
# Arguments: source folder, build folder, folder to work in.
set -eu
source=$1
build=$2
work=$3

rm -rf "$work"
mkdir -p "$work"
fail() {
    echo "FAILED: $*" >&2
    exit 1
}

check() { # the prefix it stands under
    for part in bin/petal lib/libkel.so lib/libkel.so.0.1 lib/libKelIbmRationalRose40Import.so lib/petal/html.so lib/petal/sqlite.so \
        lib/petal/postgresql.so \
        lib/pkgconfig/kel.pc lib/cmake/kel/kelConfig.cmake include/kel/host/model/KelModel.h share/man/man1/petal.1 \
        share/bash-completion/completions/petal share/zsh/vendor-completions/_petal \
        share/fish/vendor_completions.d/petal.fish; do
        [ -e "$1/$part" ] || fail "$1/$part is missing"
    done
    cmake -S "$source/examples/host" -B "$work/host" -DCMAKE_PREFIX_PATH="$1" >"$work/log"
    cmake --build "$work/host" >>"$work/log" || { cat "$work/log"; fail "the hosts do not build with cmake"; }
    mkdir -p "$work/byPkgConfig"
    for host in count_classes list_objects; do
        # shellcheck disable=SC2046 # flags are words
        c++ "$source/examples/host/$host.cpp" -o "$work/byPkgConfig/$host" \
            $(PKG_CONFIG_PATH="$1/lib/pkgconfig" pkg-config --cflags --libs kel) -Wl,-rpath,"$1/lib"
    done
    bridge=$1/lib/libKelIbmRationalRose40Import.so
    for hosts in "$work/host" "$work/byPkgConfig"; do
        counted=$("$hosts/count_classes" "$bridge" "$source/examples/bookshop.mdl")
        [ "$counted" = "$expected" ] || fail "$hosts/count_classes counts $counted classes, not $expected"
        "$hosts/list_objects" "$bridge" "$source/examples/bookshop.mdl" | sed -n 's/ KelClass / /p' | sort >"$work/listed"
        comm -13 "$work/listed" "$work/places" | grep . && fail "$hosts/list_objects finds classes elsewhere"
    done
    "$1/bin/petal" import "$source/examples/bookshop.mdl" --format json >"$work/json"
    [ "$(grep -c '"kind": "class"' "$work/json")" = "$expected" ] || fail "the installed petal imports something else"
    "$1/bin/petal" import -q "$source/examples/bookshop.mdl" --format html >"$work/page" || fail "no page is written"
    "$1/bin/petal" catalog "$source/examples" -q -o "$work/estate.db" || fail "the installed petal makes no catalogue"
    rm -rf "$work/host" "$work/estate.db"
}

grep -bo '(object Class "[^"]*' "$source/examples/bookshop.mdl" | sed 's/:(object Class "/ /' | sort >"$work/places"
expected=$("$build/bin/petal" import "$source/examples/bookshop.mdl" --format json | grep -c '"kind": "class"')
cmake --install "$build" --prefix "$work/prefix" >/dev/null
check "$work/prefix"

(cd "$work" && cpack --config "$build/CPackConfig.cmake" >"$work/log" 2>&1) || { cat "$work/log"; fail "cpack"; }
mkdir -p "$work/root/var/lib/dpkg/info" "$work/root/var/lib/dpkg/updates"
touch "$work/root/var/lib/dpkg/status"
if [ "$(id -u)" = 0 ]; then # what it depends on is in no such root, but on this machine
    dpkg --root="$work/root" --force-depends --force-script-chrootless --install "$work"/petal_*.deb >"$work/log" 2>&1 ||
        { cat "$work/log"; fail "dpkg --install"; }
    dpkg --root="$work/root" --status petal | grep -q '^Status: install ok installed' || fail "petal is not installed"
else
    dpkg-deb --extract "$work"/petal_*.deb "$work/root"
fi
check "$work/root/usr"
dpkg-deb --field "$work"/petal_*.deb Depends | grep -q libicu || fail "the package does not say what it depends on"
echo "installed twice, $expected classes counted each time"
