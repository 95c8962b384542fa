#!/bin/sh
# Fuzzes a target: fuzz/run.sh TARGET SECONDS [options of libFuzzer]. What it learns stays in build-fuzz/corpus/TARGET,
# what it finds in build-fuzz/findings. The status is not 0 when there are findings.
set -eu
cd "$(dirname "$0")/.."

target="$1"
seconds="$2"
shift 2
case "$target" in
    scanner) longest=4096 ;; # what it is compared with is slow; longer seeds are cut
    literals) longest=512 ;; # texts are put into texts
    *) longest=10000 ;;
esac
case "$target" in
    literals | command_line | report) models="" ;;
    *) models=examples ;;
esac

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${target}_fuzz"
mkdir -p "build-fuzz/corpus/$target" build-fuzz/findings
# Reports go to a file: the target may have the standard streams elsewhere at that moment.
export ASAN_OPTIONS="log_path=$PWD/build-fuzz/findings/$target-report"
exec "build-fuzz/bin/${target}_fuzz" -dict="build-fuzz/bin/${target}_fuzz.dict" -artifact_prefix="build-fuzz/findings/$target-" \
    -max_len=$longest -rss_limit_mb=1024 -timeout=20 -max_total_time="$seconds" -print_final_stats=1 "$@" \
    "build-fuzz/corpus/$target" "fuzz/corpus/$target" ${models:+"$models"}
