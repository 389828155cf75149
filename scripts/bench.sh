#!/usr/bin/env bash
# Builds the benchmarks in a Release build and runs the ones that measure the
# library against the machine, each with its anchors in the same run: the
# open of a 100,000-element model against a plain read of its file, a
# 100,000-step history against a pread loop and a gather from a mapping of
# the same words, and the open of a 100,000-step job against the same model
# with one step. Extra arguments go to every benchmark program.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${TMRDAR_BENCH_DIR:-build/release}
jobs=${TMRDAR_BENCH_JOBS:-2}
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTMRDAR_BUILD_BENCHMARKS=ON -DTMRDAR_BUILD_TESTS=OFF >/dev/null
cmake --build "$dir" -j "$jobs" --target bench_header bench_results
echo "== $(date -u '+%Y-%m-%d %H:%M UTC') on $(uname -sr), $(nproc) cores"
"$dir/benchmarks/header/bench_header" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
"$dir/benchmarks/results/bench_results" --benchmark_filter='anchor|displacement|element_force_V861' \
  --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"
