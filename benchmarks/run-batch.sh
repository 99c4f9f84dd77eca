#!/usr/bin/env bash
# Builds the demo and bm_batch in Release and runs the batch benchmark: the demo's headless batch
# over the photos of Debian's mate-backgrounds against its floor, ImageMagick and libvips, each
# run timed by /usr/bin/time -v. Installs mate-backgrounds, imagemagick, libvips-tools and time
# with apt-get when they are missing. Arguments go to bm_batch (e.g. --benchmark_filter=png,
# --benchmark_repetitions=5).
#
# The figures are worth comparing only on an otherwise idle machine.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# shellcheck source=../scripts/deps.sh
source "$root/scripts/deps.sh"
ov_ensure_packages mate-backgrounds imagemagick libvips-tools time

build="$root/build/bench"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DOVCORE_BUILD_TESTS=OFF -DOVCORE_BUILD_BENCHMARKS=ON
cmake --build "$build" --parallel "$(nproc 2>/dev/null || echo 2)" --target bm_batch
exec "$build/benchmarks/bm_batch" "$@"
