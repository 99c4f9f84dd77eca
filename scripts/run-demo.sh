#!/usr/bin/env bash
# Builds the library, the demo host editor, the sample plug-ins and the sample images, then
# runs the demo: windowed when a display is there, headless otherwise.
#
#   scripts/run-demo.sh                  the window on the sample images the build makes; headless
#                                        (no display), a batch over the photos of Debian's
#                                        mate-backgrounds
#   scripts/run-demo.sh a.jpg b.png      your own images (headless, also folders)
#   scripts/run-demo.sh --headless ...   headless even with a display
#
# Headless, the results go to build/demo/out (brightened by 10), one line per file; mate-backgrounds
# is installed with apt-get when it is missing.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"

photos=/usr/share/backgrounds/mate
arguments=("$@")
images=0
headless=0
for argument in "${arguments[@]}"; do
    case "$argument" in
        --headless) headless=1 ;;
        -*) ;;
        *) images=1 ;;
    esac
done
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    headless=1
fi
if [ "$headless" -eq 1 ] && [ "$images" -eq 0 ]; then
    ov_ensure_packages mate-backgrounds
else
    ov_ensure_packages
fi

build="$root/build/demo"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_TESTS=OFF
cmake --build "$build" --parallel "$(nproc 2>/dev/null || echo 2)" --target ovdemo ovdemo_sample_images

if [ "$images" -eq 0 ]; then
    if [ "$headless" -eq 1 ]; then
        arguments+=(--recursive "$photos")
    else
        arguments+=("$build"/samples/*)
    fi
fi
if [ "$headless" -eq 1 ]; then
    case " ${arguments[*]} " in
        *" --headless "*) ;;
        *) arguments=(--headless "${arguments[@]}") ;;
    esac
    case " ${arguments[*]} " in
        *" --output "*) ;;
        *) arguments+=(--adjust brightness=10 --output "$build/out") ;;
    esac
fi
exec "$build/bin/ovdemo" "${arguments[@]}"
