#!/usr/bin/env bash
# Installs the Debian packages the project builds and tests with, when missing.
set -euo pipefail
packages=(cmake ninja-build g++ clang libgtest-dev libgmock-dev libbenchmark-dev gfortran pkg-config binutils
  # libFuzzer and the sanitizer runtimes of clang 14, and time for the fuzz runs' CPU time.
  libclang-rt-14-dev time
  # The Python package and its tests run on Debian's /usr/bin/python3.
  python3 python3-numpy python3-pandas python3-xarray python3-matplotlib python3-distributed python3-pytest
  python3-setuptools python3-pip python3-venv
  # The Windows DLL: the 64-bit cross compiler (with its C compiler, runtime
  # and headers), GoogleTest's sources to build with it, and Wine to run its
  # tests.
  g++-mingw-w64-x86-64-posix googletest wine64)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
fi
