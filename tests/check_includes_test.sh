#!/usr/bin/env bash
# The include check passes on the sources and fails on each wrong edge planted into a copy of their skeleton.
set -euo pipefail
source_dir=$1
check="$source_dir/scripts/check_includes.py"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

python3 "$check" "$source_dir"

expect_failure() { # NAME FILE INCLUDE MESSAGE
  rm -rf "$scratch/tree"
  mkdir -p "$scratch/tree"
  (cd "$source_dir" && find base storage records plotkit plugins hostapp \( -name '*.h' -o -name '*.cpp' -o -name CMakeLists.txt \) -print0 |
    xargs -0 cp --parents -t "$scratch/tree")
  echo "#include $3" >> "$scratch/tree/$2"
  if output=$(python3 "$check" "$scratch/tree"); then
    echo "FAILED: $1 was not noticed"
    exit 1
  fi
  grep -qF "$4" <<< "$output" || { echo "FAILED: $1: no message '$4' in: $output"; exit 1; }
  echo "noticed: $1"
}

expect_failure "the plotting framework reaching into the host" plotkit/model/CPTAxis.h \
  '"plugins/PlotixPlugIn/host/KTVAgent.h"' "plotkit/model must not include plugins/PlotixPlugIn/host"
expect_failure "the plug-in reaching into the host application" plugins/PlotixPlugIn/KTVPlotixPlugIn.h \
  '"hostapp/document/SiteDocument.h"' "must not include hostapp/document"
expect_failure "the host application reaching into the plug-in" hostapp/document/SiteDocument.h \
  '"plugins/PlotixPlugIn/KTVPlotixPlugIn.h"' "hostapp/document must not include plugins/PlotixPlugIn"
expect_failure "an outlet reaching into one format" hostapp/cli/Commands.h \
  '"hostapp/exchange/formats/delimited/TextReader.h"' "hostapp/cli must not include hostapp/exchange/formats/delimited"
expect_failure "a format reaching into the site document" hostapp/exchange/formats/delimited/TextReader.h \
  '"hostapp/document/SiteDocument.h"' "hostapp/exchange/formats/delimited must not include hostapp/document"
expect_failure "a document knowing which store keeps its records" hostapp/document/SiteDocument.cpp \
  '"records/sqlite/SqliteRecordStore.h"' "hostapp/document must not include records/sqlite"
expect_failure "the site file knowing of records" storage/Database.h \
  '"records/store/RecordBlock.h"' "storage must not include records/store"
expect_failure "leaf values using widgets" base/Date.h '<QtWidgets/QWidget>' "base must not use QtWidgets"
expect_failure "two rooms whose units need each other" storage/Statement.cpp \
  '"records/store/Records.h"' "storage must not include records/store"
rm -rf "$scratch/tree" && mkdir -p "$scratch/tree/base"
echo '#include "base/B.h"' > "$scratch/tree/base/A.h"
echo '#include "base/A.h"' > "$scratch/tree/base/B.h"
if output=$(python3 "$check" "$scratch/tree"); then echo "FAILED: a cycle was not noticed"; exit 1; fi
grep -qF "include cycle: base/A.h -> base/B.h -> base/A.h" <<< "$output"
echo "noticed: a cycle"

# Units, a header with its source, may include each other no more than now and then.
rm -rf "$scratch/tree" && mkdir -p "$scratch/tree/base"
echo '#include "base/B.h"' > "$scratch/tree/base/A.cpp"
echo '' | tee "$scratch/tree/base/A.h" > "$scratch/tree/base/B.h"
echo '#include "base/A.h"' > "$scratch/tree/base/B.cpp"
if output=$(python3 "$check" "$scratch/tree"); then echo "FAILED: a cycle of units was not noticed"; exit 1; fi
grep -qF "2 of 2 units include each other" <<< "$output"
echo "noticed: a cycle of units"
