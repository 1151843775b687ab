#!/usr/bin/env bash
# Builds the benchmark of the Python module and runs it.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/prepare.sh
install_packages
build release "bench_select qrblib qrbtool" -DQRB_BUILD_BENCHMARKS=ON >/dev/null
mkdir -p build/benchmark
PYTHONPATH=$PWD/python "${QRB_PYTHON:-/usr/bin/python3}" benchmarks/python_select.py \
    "$PWD/build/release" "$PWD/build/benchmark"
