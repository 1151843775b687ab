#!/usr/bin/env bash
# Builds the benchmark of compressed points and runs it on a LAZ file: how fast they are decoded and
# encoded, and how much longer an import of them takes than of the same points uncompressed.
#   laz.sh FILE.laz [POINTS]     as many points as are imported (2,000,000), the file's repeated
set -euo pipefail
file=$(realpath "${1:?"laz.sh FILE.laz [POINTS]"}")
points=${2:-2000000}
cd "$(dirname "$0")/.."
. scripts/prepare.sh
install_packages
build release "bench_laz qrblib qrbtool" -DQRB_BUILD_BENCHMARKS=ON >/dev/null
programs=build/release/bin
work=build/benchmark
mkdir -p "$work"
"$programs/bench_laz" "$file" "$points"

TIMEFORMAT='%R %U %S'
for kind in las laz; do
    "$programs/bench_laz" "$file" "$work/points.$kind" "$points"
    : >"$work/$kind.times"
done
for _ in 1 2 3 4 5; do
    for kind in las laz; do
        rm -f "$work/points.qrbx"
        { time "$programs/qrbtool" import "$work/points.$kind" "$work/points.qrbx" >/dev/null; } \
            2>>"$work/$kind.times"
    done
done
# Medians of five.
wall() { sort -n "$work/$1.times" | awk 'NR == 3 { print $1 }'; }
cpu() { awk '{ print $2 + $3 }' "$work/$1.times" | sort -n | sed -n 3p; }
for kind in las laz; do
    echo "import of $kind: $(wall $kind) s, processor time $(cpu $kind) s"
done
awk -v a="$(wall laz)" -v b="$(wall las)" -v c="$(cpu laz)" -v d="$(cpu las)" \
    'BEGIN { printf "laz to las: %.2f, processor time %.2f\n", a / b, c / d }'
# A decoder that is not ours, for orientation: of one core, with the comparison of its points.
QRB_NODE_MODULES=${QRB_NODE_MODULES:-$PWD/$work} \
    node tests/exchange/laz_independent.mjs "$work/points.las" "$work/points.laz" || true
rm -f "$work"/points.* "$work"/la?.times
