#!/usr/bin/env bash
# Installs the build into a staging root, then builds the hosts of hosts/
# against the installed package and checks that each prints expected.txt for
# the sample job; the installed tool must run too.
# usage: run_hosts.sh BUILD_DIR WORK_DIR JOB GENERATOR C_COMPILER CXX_COMPILER [LINK_FLAGS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1 work=$2 job=$3 generator=$4 cc=$5 cxx=$6 link_flags=${7:-}

rm -rf "$work"
# Installed under a staging root and used from there: the package files and
# the tool must not depend on the prefix given at install time.
DESTDIR="$work/root" cmake --install "$build" --prefix /opt/tmrdar >/dev/null
prefix="$work/root/opt/tmrdar"

mkdir -p "$work/src"
cp "$here"/hosts/host.* "$work/src/"
cp "$here/hosts/project.cmake" "$work/src/CMakeLists.txt"
cmake -S "$work/src" -B "$work/hosts" -G "$generator" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_EXE_LINKER_FLAGS="$link_flags" >"$work/hosts.log" 2>&1 || { cat "$work/hosts.log"; exit 1; }
cmake --build "$work/hosts" >>"$work/hosts.log" 2>&1 || { cat "$work/hosts.log"; exit 1; }
grep -qF "tmrdar_DIR:PATH=$prefix/" "$work/hosts/CMakeCache.txt" || { echo "find_package(tmrdar) missed $prefix"; exit 1; }

failed=0
for host in c_host c_host_pkgconfig cxx_host fortran_host; do
  if "$work/hosts/$host" "$job" >"$work/$host.out" && diff -u "$here/expected.txt" "$work/$host.out"; then
    echo "$host: as expected"
  else
    echo "$host: FAILED"; failed=1
  fi
done
if "$prefix/bin/tmrdar" info "$job" >"$work/tool.out" && grep -q "Sample catenary riser in a regular wave" "$work/tool.out"; then
  echo "installed tool: as expected"
else
  echo "installed tool: FAILED"; failed=1
fi
exit $failed
