#!/bin/sh
# Checks the format of all sources, their includes and, with clang-tidy, the product's code.
# With --format-only only the format, with --fast all but clang-tidy.
set -eu
cd "$(dirname "$0")/.."

scripts/format.sh --check
[ "${1:-}" = "--format-only" ] && exit 0

cmake --preset release -B build-lint -DPETAL_TESTS=ON >/dev/null # only configured
scripts/unused-includes.py build-lint
[ "${1:-}" = "--fast" ] && exit 0

git ls-files 'src/*.cpp' |
    xargs -n 4 -P "$(nproc)" clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build-lint
