#!/usr/bin/env bash
# Builds the project and runs every test three times: with g++ (which also
# builds the benchmarks, so that they keep compiling, and after which the
# Python package's tests run against that build), with clang,
# and with g++ under AddressSanitizer and UndefinedBehaviorSanitizer; then
# the thread test under ThreadSanitizer, a smoke run of each fuzz target, and
# the Windows DLL, cross-built with mingw-w64, with its tests under Wine.
# Warnings are errors in every build.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
jobs=$(nproc 2>/dev/null || echo 2)

run() {
  local name=$1 compiler=$2 flags=$3
  shift 3
  local dir="build/test-${name}"
  echo "== ${name}: configure, build, test"
  cmake -S . -B "$dir" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS="$flags" -DTMRDAR_WERROR=ON -DTMRDAR_BUILD_TESTS=ON "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" -j "$jobs" --output-on-failure
}

echo "== names: the naming convention"
python3 scripts/check_names.py
run gcc g++ "" -DTMRDAR_BUILD_BENCHMARKS=ON
# The Python package against the gcc build's library, tool and sample job,
# on Debian's Python, which has numpy, pandas, xarray, matplotlib and dask.
echo "== python: pytest against the gcc build"
TMRDAR_LIBRARY="$PWD/build/test-gcc/src/frame/exports/libtmrdar.so" MPLBACKEND=Agg \
  /usr/bin/python3 -m pytest -q -p no:cacheprovider python/tests
run clang clang++ ""
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  run sanitize g++ "-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
# The exports from many threads, alone under ThreadSanitizer.
echo "== tsan: configure, build and run the thread test"
cmake -S . -B build/test-tsan -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS="-fsanitize=thread" -DTMRDAR_WERROR=ON -DTMRDAR_BUILD_TESTS=ON >/dev/null
cmake --build build/test-tsan -j "$jobs" --target test_threads
TSAN_OPTIONS=halt_on_error=1 build/test-tsan/tests/frame/test_threads
# Each fuzz target over its seeds and kept inputs, then a bounded number of
# mutations (clang, libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer).
./scripts/fuzz.sh smoke
echo "== windows: cross build of the DLL and its tests, run under Wine"
./scripts/windows.sh test
echo "== all tests passed"
