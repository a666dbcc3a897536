#!/usr/bin/env bash
# build.sh PRESET [TARGET…]: configures build/PRESET once and builds it. What it prints goes to stderr.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift

if [ ! -f "build/$preset/build.ninja" ]; then
  cmake --preset "$preset" >&2
fi
# Quiet when there is nothing to do, so that a second start is quick.
cmake --build "build/$preset" ${1:+--target "$@"} >&2
