#!/usr/bin/env bash
# Builds the library, the tool and the sample job, and shows the sample job:
# what it is, and the first second of the hang-off's heave.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
dir=build/demo
log="$dir/build.log"
mkdir -p "$dir"
echo "Building the library, the tool and the sample job in $dir (log: $log) ..."
if ! { cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTMRDAR_BUILD_TESTS=OFF &&
  cmake --build "$dir" -j "$(nproc 2>/dev/null || echo 2)" --target tmrdar_cli tmrdar_sample; } >"$log" 2>&1; then
  cat "$log"
  echo "demo: the build failed (see above)" >&2
  exit 1
fi
tmrdar="$dir/src/tools/tmrdar"
job="$dir/sample/riser"
echo
echo "\$ tmrdar info $job"
"$tmrdar" info "$job"
echo
echo "\$ tmrdar history $job displacement 1 --label HANG-OFF --count 10"
"$tmrdar" history "$job" displacement 1 --label HANG-OFF --count 10
