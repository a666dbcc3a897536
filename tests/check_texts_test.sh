#!/usr/bin/env bash
# The check of the translations passes on the sources and fails on each fault planted into a copy of them.
set -euo pipefail
source_dir=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

python3 "$source_dir/scripts/check_texts.py"

mkdir "$scratch/tree"
(cd "$source_dir" && find base storage records plotkit plugins hostapp \
  \( -name '*.h' -o -name '*.cpp' -o -name '*.ui' -o -name '*.ts' \) -print0 | xargs -0 cp --parents -t "$scratch/tree"
  cp --parents scripts/check_texts.py scripts/update_texts.sh "$scratch/tree")
german=hostapp/core/texts/plotix_de.ts
window=hostapp/window/SiteWindow.cpp

expect_failure() { # NAME FILE SED-SCRIPT MESSAGE
  sed -i "$3" "$scratch/tree/$2"
  cmp --quiet "$scratch/tree/$2" "$source_dir/$2" && { echo "FAILED: $1: nothing was planted"; exit 1; }
  if output=$(python3 "$scratch/tree/scripts/check_texts.py"); then
    echo "FAILED: $1 was not noticed"
    exit 1
  fi
  grep -qF "$4" <<< "$output" || { echo "FAILED: $1: no message '$4' in: $output"; exit 1; }
  echo "noticed: $1"
  cp "$source_dir/$2" "$scratch/tree/$2"
}

expect_failure "a new text" "$window" 's/tr("No trend selected")/tr("Nothing selected")/' \
  "plotix_de.ts: missing: plotix::SiteWindow: Nothing selected"
expect_failure "a text that is gone" "$window" 's/tr("No trend selected")/QString()/' \
  "plotix_de.ts: dead, no source has it: plotix::SiteWindow: No trend selected"
expect_failure "a new text of the interface descriptions" plugins/PlotixPlugIn/resources/KTVPlotixPlugIn.ui \
  's/<string>Statistics</<string>Figures</' "plotix_de.ts: missing: KTVPlotixPlugIn: Figures"
expect_failure "a translation that is not finished" "$german" \
  's|<translation>Kein Trend ausgewählt<|<translation type="unfinished">Kein Trend ausgewählt<|' \
  "plotix_de.ts: unfinished: plotix::SiteWindow: No trend selected"
expect_failure "an empty translation" "$german" 's|<translation>Kein Trend ausgewählt<|<translation><|' \
  "plotix_de.ts: unfinished: plotix::SiteWindow: No trend selected"
expect_failure "a plural form too few" "$german" '/<numerusform>%n Messzeilen importiert</d' \
  "plotix_de.ts: plural forms are missing: plotix::ImportSequence: Imported %n record(s)"
expect_failure "a plural without English forms" hostapp/core/texts/plotix_en.ts \
  's|<numerusform>Imported %n records<|<numerusform><|' \
  "plotix_en.ts: unfinished: plotix::ImportSequence: Imported %n record(s)"
expect_failure "a placeholder lost" "$german" 's|<translation>Im Web: %1<|<translation>Im Web<|' \
  "plotix_de.ts: other placeholders than the text's own: On the web: %1"
expect_failure "a mnemonic lost" "$german" 's|<translation>&amp;Datei<|<translation>Datei<|' \
  "plotix_de.ts: another number of mnemonics: &File"
expect_failure "a key of the bundle that nobody marked" plugins/PlotixPlugIn/PropertyDetailsTableView.cpp \
  's/QT_TRANSLATE_NOOP("Plotix", "Remove")/"Take Away"/' "not seen by update_texts.sh: Take Away"
expect_failure "a class whose texts are looked up under another's name" hostapp/window/SiteWindows.h \
  's/Q_OBJECT//' "Class 'plotix::SiteWindows' lacks Q_OBJECT macro"
