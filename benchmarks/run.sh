#!/usr/bin/env bash
# Builds the benchmark, installs DuckDB's shared library for it (from its npm package, into the
# build folder), and runs it at the given numbers of points (default: one and ten million).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/prepare.sh
install_packages
build release "bench_against_duckdb qrblib qrbtool" -DQRB_BUILD_BENCHMARKS=ON >/dev/null
package=@duckdb/node-bindings-linux-x64
work=build/benchmark
mkdir -p "$work"
[ -d "$work/node_modules/$package" ] || npm install --silent --no-save --prefix "$work" "$package"
for points in "${@:-1000000 10000000}"; do
    for count in $points; do
        sample=$work/sample-$count.qrbx
        [ -e "$sample" ] || build/release/bin/qrbtool sample --points "$count" "$sample"
        build/release/bin/bench_against_duckdb "$work/node_modules/$package/libduckdb.so" \
            "$sample" "$work"
    done
done
