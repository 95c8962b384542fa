#!/bin/sh
# Checks the format of all sources, and, unless called with --format-only, runs clang-tidy over them.
set -eu
cd "$(dirname "$0")/.."

git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h' 'fuzz/*.cpp' \
    'fuzz/*.h' | xargs clang-format --dry-run -Werror
[ "${1:-}" = "--format-only" ] && exit 0
cmake --preset release -DPETAL_TESTS=ON >/dev/null
git ls-files 'src/*.cpp' | xargs -n 4 -P "$(nproc)" clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build
