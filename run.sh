#!/usr/bin/env bash
# Installs what is missing (Debian 12), builds the release and starts the viewer.
#
#   ./run.sh                                  the sample patient: in a window, or, where there is
#                                             no display, as files in out/
#   ./run.sh --headless --picture out/a.png   arguments go on to the viewer (--help lists them)
#
# Works from any directory; relative paths among the arguments are relative to that directory.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$root/scripts/common.sh"

install_packages "$root/scripts/packages.txt"
build release --target treatment-viewer
viewer=$root/build/release/bin/treatment-viewer

# Makes the folders that the viewer's output options name.
make_output_folders() {
    local option='' argument
    for argument in "$@"; do
        case $option in
        --picture | --print | --state | --export)
            [ "$argument" = - ] || mkdir -p -- "$(dirname -- "$argument")" ;;
        --print-images) mkdir -p -- "$argument" ;;
        esac
        option=''
        case $argument in
        --picture=* | --print=* | --state=* | --export=*)
            [ "${argument#*=}" = - ] || mkdir -p -- "$(dirname -- "${argument#*=}")" ;;
        --print-images=*) mkdir -p -- "${argument#*=}" ;;
        --*) option=$argument ;;
        esac
    done
}

if [ $# -gt 0 ]; then
    make_output_folders "$@"
    exec "$viewer" "$@"
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$viewer"
fi

out=$root/out
outputs=(--picture "$out/front.png" --export "$out/scene.obj" --print "$out/treatment.pdf")
make_output_folders "${outputs[@]}"
"$viewer" --headless "${outputs[@]}"
say "There is no display to open a window on; the sample patient was rendered to"
for ((i = 1; i < ${#outputs[@]}; i += 2)); do
    printf '  %s\n' "${outputs[i]}"
done
