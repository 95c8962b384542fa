#!/bin/sh
# Builds everything and passes all tests, first optimised, then with sanitizers. Works on a bare Debian 12.
# A folder of real model files, if there is one, can be named in PETAL_REAL_MODELS. Where a program that a test needs
# cannot be run, the test fails.
set -eu
cd "$(dirname "$0")/.."

scripts/install-packages.sh --tests
export PETAL_NO_SKIP=1
for preset in release debug; do
    echo "== $preset"
    cmake --preset "$preset" -DPETAL_TESTS=ON ${PETAL_REAL_MODELS:+-DPETAL_REAL_MODELS="$PETAL_REAL_MODELS"}
    cmake --build --preset "$preset"
    ctest --preset "$preset" -j "$(nproc)"
done
