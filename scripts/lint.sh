#!/bin/sh
# Checks the format of all sources, their includes, the HTML, CSS and JavaScript of pages and, with clang-tidy, the
# product's code. With --format-only only the format, with --fast all but clang-tidy.
set -eu
cd "$(dirname "$0")/.."

scripts/format.sh --check
[ "${1:-}" = "--format-only" ] && exit 0

cmake --preset release -B build-lint -DPETAL_TESTS=ON >/dev/null # only configured
scripts/unused-includes.py build-lint

# Pages: eslint with src/html/page/.eslintrc.json; HTML as parts of a page; whether the style and the sources agree.
page=src/html/page
NODE_PATH=/usr/share/nodejs eslint -f unix "$page" # where Debian has its modules, for another Node.js than Debian's
for part in "$page"/*.html; do
    { printf '<!DOCTYPE html><html lang="en"><head><title>%s</title></head><body>\n' "$part"; cat "$part"; } |
        tidy -quiet -errors --drop-empty-elements no --warn-proprietary-attributes no
done
scripts/check-css.py "$page"/style.css "$page"/*.js "$page"/*.html src/html/*.cpp

[ "${1:-}" = "--fast" ] && exit 0

git ls-files 'src/*.cpp' |
    xargs -n 4 -P "$(nproc)" clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build-lint
