#!/bin/sh
# Line coverage of src by the unit tests, by room: coverage.sh [BUILD-FOLDER] (default: build-coverage).
# Runs the test programs of the folders, not those of the command line. Needs gcov, which comes with g++.
set -eu
cd "$(dirname "$0")/.."
build=$(realpath -m "${1:-build-coverage}")

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O0 --coverage" \
    ${CMAKE_CXX_COMPILER_LAUNCHER:+-DCMAKE_CXX_COMPILER_LAUNCHER="$CMAKE_CXX_COMPILER_LAUNCHER"} >/dev/null
programs=$(cmake --build "$build" --target help | sed -n 's/^\([a-z]*_test\): phony$/\1/p' | grep -vE '^(petal|reliability|unloading|bench)_')
# shellcheck disable=SC2086 # several words
cmake --build "$build" --target $programs >/dev/null
find "$build" -name '*.gcda' -delete
for program in $programs; do
    "$build/bin/$program" --gtest_brief=1 >/dev/null || echo "$program fails" >&2
done

# A line of a header is covered when any program covers it: gcov adds up what the objects that one call names have.
sources=$(pwd -P)
cd "$build"
find . -name '*.gcda' | xargs gcov --json-format --stdout 2>/dev/null | python3 -c '
import collections, json, os, sys
sources = sys.argv[1] + "/src/"
lines = collections.defaultdict(lambda: collections.defaultdict(int))
for document in sys.stdin:
    for file in json.loads(document)["files"]:
        name = os.path.realpath(file["file"])  # with a cache of objects it is relative to the build
        if name.startswith(sources):
            for line in file["lines"]:
                lines[name][line["line_number"]] += line["count"]
rooms = collections.defaultdict(lambda: [0, 0])
for name, counts in lines.items():
    room = rooms[name.removeprefix(sources).split("/")[0]]
    room[0] += sum(count > 0 for count in counts.values())
    room[1] += len(counts)
for room, (covered, all) in sorted(rooms.items()):
    print(f"{room:12} {covered:5} of {all:5} lines  {100 * covered / all:6.2f} %")
' "$sources"
