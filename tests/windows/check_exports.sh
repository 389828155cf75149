#!/usr/bin/env bash
# The DLL's export table holds exactly the twelve entry points, by their
# undecorated names.
# usage: check_exports.sh OBJDUMP DLL
set -euo pipefail
objdump=$1 dll=$2
# The lines of the name pointer table: "[ordinal] name".
names=$("$objdump" -p "$dll" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | sed -n 's/^\s*\[ *[0-9]*\] //p' | sort)
expected=$(printf '%s\n' DllMain XIT GetDatabaseInfo GetAnalysisDetails GetNodeProperties GetElementProperties \
  GetDistanceAlongRiser GetRequestedSingleValue GetRequestedHistory GetRequestedSingleValueError \
  GetRequestedHistoryError GetProcessedDirectStressStrainData | sort)
if [ "$names" != "$expected" ]; then
  echo "exports of $dll:"; echo "$names"
  echo "expected:"; echo "$expected"
  exit 1
fi
echo "$(echo "$names" | wc -l) exports, as expected"
