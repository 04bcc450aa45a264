#!/usr/bin/env bash
# Brings the translation files of the viewer up to date with the texts of its sources and of the
# treatment view: new texts come in untranslated, texts that are gone go. What is to be translated
# is then marked as unfinished.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
source "$root/scripts/common.sh"

install_packages "$root/scripts/packages.txt"
cd "$root"
lupdate=/usr/lib/qt6/bin/lupdate
"$lupdate" -silent -locations none -no-obsolete -I . viewer keloOpenGL \
    -ts viewer/translations/treatment-viewer_de.ts viewer/translations/treatment-viewer_es.ts
# English needs its plurals only.
"$lupdate" -silent -locations none -no-obsolete -pluralonly -I . viewer keloOpenGL \
    -ts viewer/translations/treatment-viewer_en.ts
say "Unfinished texts:"
grep -c 'type="unfinished"' viewer/translations/*.ts || true
