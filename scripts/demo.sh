#!/usr/bin/env bash
# Builds the library, the tool and the sample job, and shows the sample job.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
dir=build/demo
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTMRDAR_BUILD_TESTS=OFF >/dev/null
cmake --build "$dir" -j "$(nproc 2>/dev/null || echo 2)" --target tmrdar_cli tmrdar_sample
echo
echo "\$ tmrdar info $dir/sample/riser"
"$dir/src/tools/tmrdar" info "$dir/sample/riser"
