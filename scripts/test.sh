#!/usr/bin/env bash
# Builds the project with g++ and with clang, warnings as errors, and runs
# every test with each build.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
jobs=$(nproc 2>/dev/null || echo 2)
for compiler in g++ clang++; do
  dir="build/test-${compiler}"
  cmake -S . -B "$dir" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTMRDAR_WERROR=ON -DTMRDAR_BUILD_TESTS=ON >/dev/null
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" -j "$jobs" --output-on-failure
done
