#!/usr/bin/env bash
# check_headers_test.sh SOURCES BUILD: every header compiles alone, and one that does not is noticed.
set -euo pipefail
source_dir=$1
build_dir=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

python3 "$source_dir/scripts/check_headers.py" "$build_dir"

mkdir -p "$scratch/scripts" "$scratch/base"
cp "$source_dir/scripts/check_headers.py" "$scratch/scripts"
printf '#pragma once\n\ninline plotix::Date whenever();\n' > "$scratch/base/Leaning.h"
if output=$(python3 "$scratch/scripts/check_headers.py" "$build_dir" base/Leaning.h); then
  echo "FAILED: a header that leans on another was not noticed"
  exit 1
fi
grep -qF "base/Leaning.h does not compile alone" <<< "$output" || { echo "FAILED: said: $output"; exit 1; }
echo "noticed: a header that leans on another"
