#!/usr/bin/env bash
# Builds everything from scratch and runs the whole test suite through CTest, headless, twice:
# a normal build, then a build with AddressSanitizer and UndefinedBehaviorSanitizer. Any
# failing test or sanitizer report fails the run.
#
#   scripts/run-tests.sh            both builds
#   scripts/run-tests.sh normal     the normal build only
#   scripts/run-tests.sh sanitize   the sanitizer build only
#   scripts/run-tests.sh windows    the platform layer cross-compiled for Windows, run under Wine
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages

jobs="$(nproc 2>/dev/null || echo 2)"
variants=("${@:-normal sanitize windows}")
read -r -a variants <<<"${variants[*]}"

# The tests select the offscreen platform and, in the sanitizer build, the sanitizer options
# themselves (see tests/CMakeLists.txt), so running ctest by hand behaves the same.
export QT_QPA_PLATFORM=offscreen

# The platform layer and its Qt-free test program, cross-compiled with MinGW-w64 and run under
# Wine in a fresh prefix: the Win32 calls made for real under a Windows ABI.
# Its packages are needed by this stage only. Runs in a subshell, so nothing leaks out.
run_windows() (
    OV_PACKAGES=(g++-mingw-w64-x86-64 wine64)
    ov_ensure_packages
    local build="$root/build/ci-windows"
    local wine=/usr/lib/wine/wine64
    rm -rf "$build"
    mkdir -p "$build"
    echo "=== windows build in $build"
    x86_64-w64-mingw32-g++ -std=c++17 -O2 -Wall -Wextra -Werror -D_WIN32_WINNT=0x0601 \
        -I"$root/src/platform" "$root/tests/platform/tst_platformlayer.cpp" \
        "$root/src/platform/OVPlatform.cpp" "$root/src/platform/win32/OVPlatform_win32.cpp" \
        -static -liphlpapi -o "$build/tst_platformlayer.exe"
    echo "=== windows tests under $("$wine" --version)"
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    "$wine" wineboot -i >/dev/null 2>&1
    local status=0
    (cd "$build" && "$wine" ./tst_platformlayer.exe) || status=$?
    /usr/lib/wine/wineserver -k || true
    exit "$status"
)

for variant in "${variants[@]}"; do
    if [ "$variant" = windows ]; then
        run_windows
        continue
    fi
    build="$root/build/ci-$variant"
    case "$variant" in
        normal) options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_BENCHMARKS=ON) ;;
        sanitize) options=(-DCMAKE_BUILD_TYPE=Debug -DOVCORE_SANITIZE=ON) ;;
        *) echo "Unknown build: $variant (normal, sanitize or windows)" >&2; exit 2 ;;
    esac
    echo "=== $variant build in $build"
    rm -rf "$build"
    cmake -S "$root" -B "$build" "${options[@]}"
    cmake --build "$build" --parallel "$jobs"
    echo "=== $variant tests"
    (cd "$build" && ctest --output-on-failure --parallel "$jobs" --timeout 900)
done
echo "=== all test runs passed: ${variants[*]}"
