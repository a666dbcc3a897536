#!/usr/bin/env bash
# update_texts.sh [FOLDER]: brings the translations in FOLDER (default: hostapp/core/texts) up to date with the texts
# in the sources. New texts come in as "unfinished", for a person to translate; texts that are gone are taken out.
# English needs entries for plurals alone.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-hostapp/core/texts}
lupdate=$(PATH="/usr/lib/qt6/bin:$PATH" command -v lupdate)

for file in "$folder"/plotix_*.ts; do
  language=$(basename "$file" .ts)
  language=${language#plotix_}
  only=()
  [ "$language" = en ] && only=(-pluralonly)
  "$lupdate" -silent -no-obsolete -locations none -source-language en -target-language "$language" "${only[@]}" \
    -extensions cpp,h,ui -recursive base storage records plotkit plugins hostapp -I . -ts "$file" 2>&1 |
    { grep -v 'Qualifying with unknown namespace' || true; } >&2
done
