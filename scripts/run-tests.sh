#!/usr/bin/env bash
# Builds everything from scratch and runs the whole test suite through CTest, headless, twice:
# a normal build, then a build with AddressSanitizer and UndefinedBehaviorSanitizer. Any
# failing test or sanitizer report fails the run.
#
#   scripts/run-tests.sh            both builds
#   scripts/run-tests.sh normal     the normal build only
#   scripts/run-tests.sh sanitize   the sanitizer build only
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages

jobs="$(nproc 2>/dev/null || echo 2)"
variants=("${@:-normal sanitize}")
read -r -a variants <<<"${variants[*]}"

# The tests select the offscreen platform and, in the sanitizer build, the sanitizer options
# themselves (see tests/CMakeLists.txt), so running ctest by hand behaves the same.
export QT_QPA_PLATFORM=offscreen

for variant in "${variants[@]}"; do
    build="$root/build/ci-$variant"
    case "$variant" in
        normal) options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DOVCORE_BUILD_BENCHMARKS=ON) ;;
        sanitize) options=(-DCMAKE_BUILD_TYPE=Debug -DOVCORE_SANITIZE=ON) ;;
        *) echo "Unknown build: $variant (normal or sanitize)" >&2; exit 2 ;;
    esac
    echo "=== $variant build in $build"
    rm -rf "$build"
    cmake -S "$root" -B "$build" "${options[@]}"
    cmake --build "$build" --parallel "$jobs"
    echo "=== $variant tests"
    (cd "$build" && ctest --output-on-failure --parallel "$jobs" --timeout 900)
done
echo "=== all test runs passed: ${variants[*]}"
