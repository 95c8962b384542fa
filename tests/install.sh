#!/bin/sh
# Installs a build into a root of its own, twice: with cmake, and as the Debian package. Builds the example host against
# each, once found by cmake and once by pkg-config, and has it count the classes of an example.
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
    for part in bin/petal lib/libkel.so lib/libKelIbmRationalRose40Import.so lib/pkgconfig/kel.pc \
        lib/cmake/kel/kelConfig.cmake include/kel/host/model/KelModel.h share/man/man1/petal.1 \
        share/bash-completion/completions/petal share/zsh/vendor-completions/_petal \
        share/fish/vendor_completions.d/petal.fish; do
        [ -e "$1/$part" ] || fail "$1/$part is missing"
    done
    cmake -S "$source/examples/host" -B "$work/host" -DCMAKE_PREFIX_PATH="$1" >"$work/log"
    cmake --build "$work/host" >>"$work/log" || { cat "$work/log"; fail "the host does not build with cmake"; }
    # shellcheck disable=SC2046 # flags are words
    c++ -std=c++20 "$source/examples/host/count_classes.cpp" -o "$work/byPkgConfig" \
        $(PKG_CONFIG_PATH="$1/lib/pkgconfig" pkg-config --cflags --libs kel) -Wl,-rpath,"$1/lib"
    for host in "$work/host/count_classes" "$work/byPkgConfig"; do
        counted=$("$host" "$1/lib/libKelIbmRationalRose40Import.so" "$source/examples/bookshop.mdl")
        [ "$counted" = "$expected" ] || fail "$host counts $counted classes, not $expected"
    done
    "$1/bin/petal" import "$source/examples/bookshop.mdl" --format json >"$work/json"
    [ "$(grep -c '"kind": "class"' "$work/json")" = "$expected" ] || fail "the installed petal imports something else"
    rm -rf "$work/host"
}

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
