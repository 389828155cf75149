#!/usr/bin/env bash
# The Windows build: tmrdar.dll (x86-64) and its import library, cross-built
# with mingw-w64 into build/windows.
#
#   ./scripts/windows.sh          builds the DLL (build/windows/bin/tmrdar.dll)
#   ./scripts/windows.sh test     builds the Windows tests too and runs them
#                                 under Wine; without a Wine that starts, only
#                                 the DLL's export table is checked
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
mode=${1:-build}
dir=build/windows
jobs=$(nproc 2>/dev/null || echo 2)

cmake -S . -B "$dir" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
  -DCMAKE_BUILD_TYPE=Release -DTMRDAR_WERROR=ON -DTMRDAR_BUILD_TESTS=ON >/dev/null
cmake --build "$dir" -j "$jobs" --target tmrdar
[ "$mode" = test ] || { echo "built $dir/bin/tmrdar.dll and $dir/src/frame/exports/libtmrdar.dll.a"; exit 0; }

# Wine keeps its prefix in the build tree and starts once here, so that the
# tests do not pay for the prefix's creation.
export WINEPREFIX="$PWD/$dir/wine" WINEDEBUG=-all
wine=$(command -v wine64 || command -v wine || { [ -x /usr/lib/wine/wine64 ] && echo /usr/lib/wine/wine64; } || true)
if [ -z "$wine" ] || ! "$wine" wineboot -i >"$dir/wineboot.log" 2>&1 || ! "$wine" cmd /c exit 0 >/dev/null 2>&1; then
  echo "== windows: SKIPPED the tests under Wine: Wine cannot start here (${wine:-no wine found}; see $dir/wineboot.log)"
  ctest --test-dir "$dir" --output-on-failure -R '^dll_exports$'
  exit 0
fi
cmake --build "$dir" -j "$jobs" --target windows_tests
ctest --test-dir "$dir" --output-on-failure
