#!/bin/sh
# Says how many lines of each folder under src/ the corpora of earlier fuzzing runs, and the seeds, reach:
# fuzz/coverage.sh [TARGET...]. The lines themselves are shown by the page build-coverage/lines/index.html.
set -eu
cd "$(dirname "$0")/.."

[ $# -gt 0 ] || set -- scanner import export notation units literals command_line report
flags="-fprofile-instr-generate -fcoverage-mapping"
cmake --preset fuzz -B build-coverage -DPETAL_FUZZ=OFF -DPETAL_SANITIZE=OFF -DCMAKE_CXX_FLAGS="$flags" >/dev/null
targets=""
for target in "$@"; do
    targets="$targets ${target}_replay"
done
# shellcheck disable=SC2086 # the targets are words
cmake --build build-coverage --target $targets

rm -f build-coverage/*.profraw
objects="build-coverage/lib/libkel.so -object build-coverage/lib/libKelIbmRationalRose40Import.so"
for target in "$@"; do
    learnt="build-fuzz/corpus/$target"
    LLVM_PROFILE_FILE="build-coverage/$target.profraw" "build-coverage/bin/${target}_replay" "fuzz/corpus/$target" \
        $([ -d "$learnt" ] && echo "$learnt")
    objects="$objects -object build-coverage/bin/${target}_replay"
done
others="-ignore-filename-regex=/(tests|fuzz|include)/"
llvm-profdata-14 merge -sparse build-coverage/*.profraw -o build-coverage/all.profdata
# shellcheck disable=SC2086
llvm-cov-14 show $objects -instr-profile build-coverage/all.profdata -format html -output-dir build-coverage/lines $others
# shellcheck disable=SC2086
llvm-cov-14 export $objects -instr-profile build-coverage/all.profdata -summary-only $others |
    python3 fuzz/coverageByFolder.py
