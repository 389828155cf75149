#!/usr/bin/env bash
# The fuzz targets (fuzz/): builds them in build/fuzz (clang, libFuzzer,
# AddressSanitizer and UndefinedBehaviorSanitizer) and runs them.
#
#   scripts/fuzz.sh TARGET SECONDS   a long run of one target (fuzz_open,
#       fuzz_requests or fuzz_text) at the lowest priority, for SECONDS of
#       wall time, in fork mode: inputs that exhaust memory or time are kept
#       and the run goes on, and so do crashes, each kept as an artifact.
#       The corpus, artifacts and logs stay in $TMRDAR_FUZZ_WORK/TARGET
#       (default /work/fuzz-work), so that runs continue one another; each
#       run appends its CPU time, executions and edges to runs.tsv there.
#   scripts/fuzz.sh smoke [RUNS]     each target over its seeds and
#       fuzz/regressions/TARGET, then RUNS mutations (default 10000), a fixed
#       seed, 50 s at most a target; fails on any crash, leak, sanitizer
#       report, exhausted memory or input over 20 s. Part of scripts/test.sh.
#   scripts/fuzz.sh totals           the sums of runs.tsv of every target.
#   scripts/fuzz.sh resources        the kept inputs of fuzz/regressions,
#       each one's time and peak memory.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=build/fuzz
targets=(fuzz_open fuzz_requests fuzz_text)
work_root=${TMRDAR_FUZZ_WORK:-/work/fuzz-work}
jobs=$(nproc 2>/dev/null || echo 2)
# Memory per input and per process: an open that asks for more is reported
# as an out-of-memory input, kept, and skipped in the long runs.
limits=(-malloc_limit_mb=1024 -rss_limit_mb=2048 -timeout=20)

build_targets() {
  if [ ! -f "$build/build.ninja" ]; then
    cmake -S . -B "$build" -G Ninja -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
      -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTMRDAR_WERROR=ON -DTMRDAR_BUILD_TESTS=OFF -DTMRDAR_BUILD_FUZZERS=ON >/dev/null
  fi
  # Long runs of several targets at once share the build: one builds at a time.
  flock "$build/.build-lock" cmake --build "$build" -j "$jobs" --target "${targets[@]}" make_seeds
}

make_seeds() {  # DIRECTORY
  rm -rf "$1"
  "$build/fuzz/make_seeds" "$1" docs/examples
}

totals() {
  printf '%-14s %6s %10s %14s %7s %7s\n' target runs cpu_hours executions edges crashes
  for t in "${targets[@]}"; do
    local f="$work_root/$t/runs.tsv"
    [ -f "$f" ] || continue
    awk -F'\t' -v t="$t" 'NR > 1 { cpu += $3 + $4; ex += $6; if ($7 > edges) edges = $7; cr += $9; n++ }
      END { printf "%-14s %6d %10.2f %14d %7d %7d\n", t, n, cpu / 3600, ex, edges, cr }' "$f"
  done
}

case "${1:-}" in
  smoke)
    runs=${2:-10000}
    build_targets
    seeds=$(mktemp -d)
    trap 'rm -rf "$seeds"' EXIT
    make_seeds "$seeds"
    for t in "${targets[@]}"; do
      echo "== fuzz smoke: $t, the seeds, the regressions and $runs runs"
      corpus="$seeds/$t-corpus"
      mkdir -p "$corpus" "fuzz/regressions/$t"
      ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "$build/fuzz/$t" "${limits[@]}" -runs="$runs" -seed=1 -max_total_time=50 -dict=fuzz/tmrdar.dict \
        -artifact_prefix="$seeds/" "$corpus" "$seeds/$t" "fuzz/regressions/$t" 2>"$seeds/$t.log" ||
        { tail -60 "$seeds/$t.log"; exit 1; }
      grep -E '^#[0-9]+[[:space:]]+(INITED|DONE)' "$seeds/$t.log" | tail -2 || true
    done
    ;;
  totals)
    totals
    ;;
  resources)
    build_targets
    for t in "${targets[@]}"; do
      for input in fuzz/regressions/"$t"/*; do
        [ -f "$input" ] || continue
        /usr/bin/time -f "$t $(basename "$input"): %e s, %M KiB peak" "$build/fuzz/$t" -rss_limit_mb=8192 \
          -malloc_limit_mb=8192 -timeout=600 "$input" 2>&1 | grep -E ' s, [0-9]+ KiB peak|^(==[0-9]+==ERROR|SUMMARY)' || true
      done
    done
    ;;
  fuzz_open | fuzz_requests | fuzz_text)
    target=$1
    seconds=${2:?seconds of wall time}
    build_targets
    work="$work_root/$target"
    mkdir -p "$work/corpus" "$work/artifacts" "$work/logs"
    make_seeds "$work/seeds"
    stamp=$(date -u +%Y%m%dT%H%M%SZ)
    log="$work/logs/$stamp.log"
    # Fork mode runs the inputs in a child, one job after another, so that an
    # input that runs out of memory or time is kept and the run goes on.
    status=0
    ASAN_OPTIONS=detect_leaks=1 /usr/bin/time -f '%U %S %e' -o "$work/logs/$stamp.time" \
      nice -n 19 "$build/fuzz/$target" "${limits[@]}" -fork=1 -ignore_ooms=1 -ignore_timeouts=1 -ignore_crashes=1 \
      -max_total_time="$seconds" -dict=fuzz/tmrdar.dict -artifact_prefix="$work/artifacts/" \
      "$work/corpus" "$work/seeds/$target" "$root/fuzz/regressions/$target" >"$log" 2>&1 || status=$?
    read -r user sys wall <"$work/logs/$stamp.time"
    # The last status line: "#EXECS: cov: EDGES ft: FEATURES corp: N ... oom/timeout/crash: O/T/C ...".
    last=$(grep -E '^#[0-9]+: cov:' "$log" | tail -1 || true)
    execs=$(sed -E 's/^#([0-9]+):.*/\1/' <<<"$last")
    edges=$(sed -E 's/.* cov: ([0-9]+).*/\1/' <<<"$last")
    corpus=$(sed -E 's/.* corp: ([0-9]+).*/\1/' <<<"$last")
    otc=$(sed -E 's#.* oom/timeout/crash: ([0-9]+/[0-9]+/[0-9]+).*#\1#' <<<"$last")
    [ -f "$work/runs.tsv" ] || printf 'start\twall_s\tuser_s\tsys_s\tstatus\texecutions\tedges\tcorpus\tcrashes\toom_timeout_crash\n' >"$work/runs.tsv"
    printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$stamp" "$wall" "$user" "$sys" "$status" "${execs:-0}" \
      "${edges:-0}" "${corpus:-0}" "${otc##*/}" "${otc:-0/0/0}" >>"$work/runs.tsv"
    tail -1 "$work/runs.tsv"
    ;;
  *)
    sed -n '2,21p' "$0"
    exit 2
    ;;
esac
