#!/usr/bin/env bash
# Builds the benchmark of pictures and runs it on a simulated scan with a level of detail.
#   view.sh [POINTS]     10,000,000
set -euo pipefail
points=${1:-10000000}
cd "$(dirname "$0")/.."
. scripts/prepare.sh
install_packages
build release "bench_view qrblib qrbtool" -DQRB_BUILD_BENCHMARKS=ON >/dev/null
programs=build/release/bin
work=build/benchmark
mkdir -p "$work"
cloud=$work/view-$points.qrbx
if [ ! -f "$cloud" ]; then
    "$programs/qrbtool" -q sample -n "$points" "$cloud.new"
    "$programs/qrbtool" -q lod "$cloud.new" set --mode combine --size 5 > /dev/null
    mv "$cloud.new" "$cloud"
fi
"$programs/bench_view" "$programs/qrblib.so" "$cloud"
