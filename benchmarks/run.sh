#!/usr/bin/env bash
# Builds the benchmarks, installs DuckDB's shared library for them (from its npm package, into the
# build folder), makes the clouds and prints the tables.
#   run.sh [--quick | --large] [--las FILE [--points N]...]
#     --quick      1 million points only; without it 1 and 10 million, with --large 1, 10 and 100
#     --las FILE   points of a LAS file in place of a simulated scan: the file as it is, or copies of
#                  it side by side, of each number given with --points
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/prepare.sh

sizes=(1000000 10000000)
las=
points=()
while [ $# -gt 0 ]; do
    case "$1" in
        --quick) sizes=(1000000) ;;
        --large) sizes=(1000000 10000000 100000000) ;;
        --las) las=${2:?"--las needs a file"}; shift ;;
        --points) points+=("${2:?"--points needs a number"}"); shift ;;
        *) sed -n 2,8p benchmarks/run.sh >&2; exit 2 ;;
    esac
    shift
done
[ ${#points[@]} -eq 0 ] || sizes=("${points[@]}")

install_packages
programs=build/release/bin
build release "bench_side_by_side bench_sample_las bench_tile_las" -DQRB_BUILD_BENCHMARKS=ON \
    >/dev/null
work=build/benchmark
mkdir -p "$work"

package=@duckdb/node-bindings-linux-x64
duckdb=$work/node_modules/$package/libduckdb.so
if ! [ -e "$duckdb" ] &&
    ! npm install --silent --no-save --prefix "$work" "$package@1.5.6-r.1"; then
    echo "DuckDB can't be installed (npm install $package): only our figures are printed." >&2
    duckdb=none
fi

clouds=()
if [ -n "$las" ] && [ ${#points[@]} -eq 0 ]; then
    clouds=("$las")
else
    for count in "${sizes[@]}"; do
        if [ -n "$las" ]; then
            cloud=$work/$(basename "$las" .las)-$count.las
            [ -e "$cloud" ] || "$programs/bench_tile_las" "$las" "$count" "$cloud"
        else
            cloud=$work/scan-$count.las
            [ -e "$cloud" ] || "$programs/bench_sample_las" "$count" "$cloud"
        fi
        clouds+=("$cloud")
    done
fi
"$programs/bench_side_by_side" "$work" "$programs/qrbtool" "$duckdb" "${clouds[@]}"
