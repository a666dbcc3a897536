#!/usr/bin/env bash
# check_namespaces_test.sh SOURCES: the plug-in's headers stand in their namespaces, and strays are noticed.
set -euo pipefail
source_dir=$1
check="$source_dir/scripts/check_namespaces.py"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

python3 "$check" "$source_dir"

expect_failure() { # FOLDER TEXT MESSAGE
  rm -rf "$scratch/tree" && mkdir -p "$scratch/tree/$1"
  printf "$2" > "$scratch/tree/$1/Stray.h"
  if output=$(python3 "$check" "$scratch/tree"); then echo "FAILED: nothing noticed in $1"; exit 1; fi
  grep -qF "$1/Stray.h: $3" <<< "$output" || { echo "FAILED: said: $output"; exit 1; }
  echo "noticed: $1/Stray.h $3"
}

ours='namespace plotix {\n\nint f();\n\n}\n'
expect_failure plugins/PlotixPlugIn "$ours" "stands in namespace plotix"
expect_failure plugins/PlotixPlugIn/host "$ours" "stands in namespace plotix"
expect_failure plugins/PlotixPlugIn/logic 'int f();\n' "does not stand in namespace plotix"
expect_failure plugins/PlotixPlugIn/reading 'namespace plotix {\nclass Date;\n}\n\nint f();\n' \
  "does not stand in namespace plotix"
