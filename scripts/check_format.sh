#!/usr/bin/env bash
# Every source as clang-format writes it; names the files that differ. --fix rewrites them.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(find base storage records plotkit plugins hostapp tests benchmarks -name '*.h' -o -name '*.cpp' | sort)
[ "${#files[@]}" -gt 0 ] || { echo "no sources found"; exit 1; }
if [ "${1:-}" = "--fix" ]; then
  clang-format -i "${files[@]}"
else
  clang-format --dry-run --Werror "${files[@]}"
fi
