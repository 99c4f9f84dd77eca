#!/usr/bin/env bash
# Builds everything from scratch and runs the whole test suite, headless, in stages: a normal
# build and a build with AddressSanitizer and UndefinedBehaviorSanitizer, each running every
# CTest test, then a clang build of the fuzz targets, each fuzzed for a bounded time. Any
# failing test, sanitizer report or fuzzing finding fails the run.
#
#   scripts/run-tests.sh            every stage: normal sanitize fuzz windows
#   scripts/run-tests.sh normal     the normal build only
#   scripts/run-tests.sh sanitize   the sanitizer build only
#   scripts/run-tests.sh fuzz       the fuzz targets only (OVCORE_FUZZ_SECONDS each, default 60)
#   scripts/run-tests.sh windows    every source compiled for Windows; the platform layer run under Wine
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages

jobs="$(nproc 2>/dev/null || echo 2)"
stages=("${@:-normal sanitize fuzz windows}")
read -r -a stages <<<"${stages[*]}"

# The tests select the offscreen platform and, in the sanitizer build, the sanitizer options
# themselves (see tests/CMakeLists.txt), so running ctest by hand behaves the same.
export QT_QPA_PLATFORM=offscreen

# A fresh build in build/ci-<name> with the given CMake options, then every CTest test.
stage_ctest() {
    local name="$1"
    shift
    local build="$root/build/ci-$name"
    echo "=== $name build in $build"
    rm -rf "$build"
    cmake -S "$root" -B "$build" "$@"
    cmake --build "$build" --parallel "$jobs"
    echo "=== $name tests"
    (cd "$build" && ctest --output-on-failure --parallel "$jobs" --timeout 900)
}

# The fuzz targets of fuzz/, built with clang and libFuzzer (tests and examples off), each run
# for OVCORE_FUZZ_SECONDS; the inputs behind a finding are left in build/ci-fuzz/fuzz/artifacts.
stage_fuzz() {
    local build="$root/build/ci-fuzz"
    echo "=== fuzz build in $build"
    rm -rf "$build"
    CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DOVCORE_FUZZ=ON -DOVCORE_FUZZ_SECONDS="${OVCORE_FUZZ_SECONDS:-60}" \
        -DOVCORE_BUILD_TESTS=OFF -DOVCORE_BUILD_EXAMPLES=OFF
    cmake --build "$build" --parallel "$jobs" --target ov_fuzzers
    echo "=== fuzzing"
    local log="$build/fuzz/fuzz.log"
    local rc=0
    (cd "$build/fuzz" && ctest --verbose --parallel "$jobs") >"$log" 2>&1 || rc=$?
    grep -E "fuzz_[a-z0-9_]+: Done|found a fault|tests passed|tests failed" "$log" || true
    if [ "$rc" -ne 0 ]; then
        echo "=== fuzzing found faults; the whole output is in $log" >&2
        return "$rc"
    fi
}

# Every source of the libraries and the examples, with their moc output, compiled for Windows
# by MinGW-w64 against the host's Qt headers (-fsyntax-only, nothing linked; see
# cmake/windows/Toolchain.cmake). Then the platform layer and its Qt-free test program,
# cross-compiled and run under Wine in a fresh prefix: the Win32 calls made for real under a
# Windows ABI. Its packages are needed by this stage only. Runs in a subshell, so nothing it
# sets leaks out.
stage_windows() (
    OV_PACKAGES=(g++-mingw-w64-x86-64 g++-mingw-w64-x86-64-posix wine64)
    ov_ensure_packages
    local build="$root/build/ci-windows"
    local wine=/usr/lib/wine/wine64
    rm -rf "$build"
    mkdir -p "$build"
    echo "=== windows compile of every source in $build/compile"
    cmake -S "$root" -B "$build/compile" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/windows/Toolchain.cmake" \
        -DOVCORE_BUILD_TESTS=OFF
    cmake --build "$build/compile" --parallel "$jobs"
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

for stage in "${stages[@]}"; do
    case "$stage" in
        normal) stage_ctest normal -DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_BENCHMARKS=ON ;;
        sanitize) stage_ctest sanitize -DCMAKE_BUILD_TYPE=Debug -DOVCORE_SANITIZE=ON ;;
        fuzz) stage_fuzz ;;
        windows) stage_windows ;;
        *)
            echo "Unknown stage: $stage (normal, sanitize, fuzz or windows)" >&2
            exit 2
            ;;
    esac
done
echo "=== all stages passed: ${stages[*]}"
