#!/usr/bin/env bash
# Builds the release packages into build/release:
#   tmrdar-VERSION-windows-x86_64.zip   tmrdar.dll, its import library
#                                        libtmrdar.dll.a, its module definition
#                                        file, tmrdar.h, tmrdar.hpp and the
#                                        tool tmrdar.exe, cross-built
#   tmrdar-VERSION-linux-x86_64.tar.gz  the tree that `cmake --install` makes
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh
version=$(sed -n 's/^project(tmrdar VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
out="$PWD/build/release"
jobs=$(nproc 2>/dev/null || echo 2)
rm -rf "$out/windows" "$out/linux"
mkdir -p "$out"

echo "== windows: cross build of tmrdar.dll and tmrdar.exe"
cmake -S . -B "$out/windows-build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
  -DCMAKE_BUILD_TYPE=Release -DTMRDAR_BUILD_TESTS=OFF >/dev/null
cmake --build "$out/windows-build" -j "$jobs" --target tmrdar tmrdar_cli
name="tmrdar-$version-windows-x86_64"
stage="$out/windows/$name"
mkdir -p "$stage/include/tmrdar" "$stage/lib"
cp "$out/windows-build/bin/tmrdar.dll" "$out/windows-build/bin/tmrdar.exe" "$stage/"
x86_64-w64-mingw32-strip --strip-unneeded "$stage/tmrdar.dll"
x86_64-w64-mingw32-strip "$stage/tmrdar.exe"
cp "$out/windows-build/src/frame/exports/libtmrdar.dll.a" cmake/tmrdar.def "$stage/lib/"
cp include/tmrdar/tmrdar.h include/tmrdar/tmrdar.hpp "$stage/include/tmrdar/"
rm -f "$out/$name.zip"
(cd "$out/windows" && cmake -E tar cf "$out/$name.zip" --format=zip "$name")

echo "== linux: build and cmake --install"
cmake -S . -B "$out/linux-build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTMRDAR_BUILD_TESTS=OFF >/dev/null
cmake --build "$out/linux-build" -j "$jobs" --target tmrdar tmrdar_cli
name="tmrdar-$version-linux-x86_64"
cmake --install "$out/linux-build" --prefix "$out/linux/$name" --strip >/dev/null
rm -f "$out/$name.tar.gz"
(cd "$out/linux" && cmake -E tar czf "$out/$name.tar.gz" "$name")

ls -l "$out"/*.zip "$out"/*.tar.gz
