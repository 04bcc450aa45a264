#!/usr/bin/env bash
# Makes the pictures of docs/pictures anew, with the viewer that build/dev holds.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
source "$root/scripts/common.sh"

install_packages "$root/scripts/packages.txt" "$root/scripts/packages-tests.txt"
build dev
viewer=$root/build/dev/bin/treatment-viewer
pictures=$root/docs/pictures
sources=$pictures/sources

cd "$pictures"
for script in "$sources"/*.script; do
    "$viewer" --headless --size 1200x750 --play "$script"
done

# The window: a visit from opening to quitting, by a real pointer and keys.
source "$root/scripts/display.sh"
trap stop_display EXIT
start_display
LC_ALL=C.UTF-8 KELO_KEEP_PICTURES=$pictures "$root/build/dev/bin/viewer_window_tests" \
    --gtest_brief=1 --gtest_filter='WalkThrough.*'
stop_display

# The pages: pictures of PDF documents, at 80 dots an inch.
pages=$(mktemp -d)
trap 'rm -rf "$pages"' EXIT
"$viewer" --headless --print "$pages" --page-size a4 --notation fdi "$sources"/*.json
"$viewer" --headless --print "$pages/grey-letter-portrait.pdf" --page-size letter --portrait \
    --greyscale "$sources/ten-elastics.json"
for page in "$pages"/*.pdf; do
    pdftoppm -r 80 -png "$page" "$pictures/page-$(basename "$page" .pdf)"
done
say "The pictures are in $pictures; look at them before you keep them."
