#!/usr/bin/env bash
# Builds the library and the demo host editor, then runs the demo. Without a display it runs
# on Qt's offscreen platform.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages

build="$root/build/demo"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_TESTS=OFF
cmake --build "$build" --parallel "$(nproc 2>/dev/null || echo 2)" --target ovdemo

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
    export QT_QPA_PLATFORM=offscreen
fi
exec "$build/bin/ovdemo" "$@"
