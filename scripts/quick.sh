#!/bin/sh
# Builds the release preset and runs the fast test programs: all but those of the command line and of the whole.
# Takes folders of tests to run only their programs: scripts/quick.sh builder scanner
set -eu
cd "$(dirname "$0")/.."

cmake --preset release -DPETAL_TESTS=ON >/dev/null
folders="${*:-$(cmake --build --preset release --target help | sed -n 's/^\([a-z]*\)_test: phony$/\1/p' |
    grep -vxE 'petal|reliability|unloading|bench')}"
# shellcheck disable=SC2046,SC2086 # the folders are words
cmake --build --preset release --target $(printf '%s_test ' $folders)
# shellcheck disable=SC2086
ctest --preset release -j "$(nproc)" -R "^($(printf '%s|' $folders)none)\$"
