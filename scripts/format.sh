#!/bin/sh
# Formats all sources, their includes with them; with --check only reports what is not formatted.
set -eu
cd "$(dirname "$0")/.."

case "${1:-}" in
--check) action="--dry-run -Werror" ;;
*) action="-i" ;;
esac
# shellcheck disable=SC2086 # several words
git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h' 'fuzz/*.cpp' 'fuzz/*.h' \
    'examples/*.cpp' | xargs clang-format $action
