#!/bin/sh
# Installs the Debian packages that building, or with --tests testing, --lint linting, --bench measuring or --fuzz
# fuzzing, needs, if any is missing. Asks for rights only then.
set -eu

packages="g++ cmake ninja-build pkg-config libicu-dev libcli11-dev rapidjson-dev robin-map-dev libhwy-dev libxxhash-dev"
packages="$packages libdeflate-dev libsqlite3-dev libpq-dev"
case "${1:-}" in
--tests)
    packages="$packages libgtest-dev locales dpkg-dev file python3 python3-jsonschema git"
    # the metamodel of UML loads what format uml writes
    packages="$packages default-jdk-headless libeclipse-emf-common-java libeclipse-emf-ecore-java"
    packages="$packages libeclipse-emf-ecore-xmi-java"
    packages="$packages chromium chromium-driver python3-selenium tidy" # show and check the format html
    packages="$packages graphviz plantuml" # draw the formats dot and plantuml
    packages="$packages libxml2-utils libxml2-dev librsvg2-bin" # read the pictures of petal draw
    # the databases load what format sql writes
    packages="$packages postgresql sqlite3 parallel"
    ;;
--lint) packages="$packages clang-format clang-tidy eslint tidy python3-tinycss2" ;;
--bench)
    packages="$packages python3 flex libhyperscan-dev linux-perf valgrind strace gnuplot-nox"
    packages="$packages sqlite3 postgresql" # catalogues
    packages="$packages chromium chromium-driver python3-selenium" # show the format html
    ;;
--fuzz) packages="$packages libgtest-dev libxml2-dev clang-14 libfuzzer-14-dev libclang-rt-14-dev llvm-14 python3" ;;
esac

missing=""
for package in $packages; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
done
[ -z "$missing" ] && exit 0

as_root=""
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages:$missing. Install them as root: apt-get install$missing" >&2; exit 1; }
    as_root="sudo"
fi
echo "Installing:$missing"
$as_root apt-get update -qq
# shellcheck disable=SC2086 # the packages are words
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
