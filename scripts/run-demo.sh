#!/usr/bin/env bash
# Builds the library, the demo host editor, the sample plug-ins and the sample images, then
# runs the demo: windowed when a display is there, headless otherwise.
#
#   scripts/run-demo.sh                  the sample images the build makes
#   scripts/run-demo.sh a.jpg b.png      your own images
#   scripts/run-demo.sh --headless ...   headless even with a display
#
# Headless, the results go to build/demo/out (brightened by 10), one line per file.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages

build="$root/build/demo"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_TESTS=OFF
cmake --build "$build" --parallel "$(nproc 2>/dev/null || echo 2)" --target ovdemo ovdemo_sample_images

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
if [ "$images" -eq 0 ]; then
    arguments+=("$build"/samples/*)
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    headless=1
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
