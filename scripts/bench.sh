#!/usr/bin/env bash
# Builds the benchmarks and prints how many megapixels a second every effect does.
#   scripts/bench.sh [--json FILE] [--only PATTERN]
set -euo pipefail
from=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/quietly.sh
source scripts/quietly.sh

usage() {
    echo "usage: scripts/bench.sh [--json FILE] [--only PATTERN]" >&2
    exit 2
}

options=(--benchmark_min_time=0.3)
while (($# > 0)); do
    (($# >= 2)) || usage
    case "$1" in
        --json) options+=("--benchmark_out=$(cd "$from" && realpath -m -- "$2")" --benchmark_out_format=json) ;;
        --only) options+=("--benchmark_filter=$2") ;;
        *) usage ;;
    esac
    shift 2
done

scripts/setup.sh
if [[ ! -e /usr/include/benchmark/benchmark.h ]]; then
    echo "bench: installing libbenchmark-dev"
    as_root=()
    ((EUID == 0)) || as_root=(sudo)
    quietly build/logs/bench-install.log "${as_root[@]}" apt-get -y -q install libbenchmark-dev
fi
use_ccache
quietly build/logs/bench-configure.log \
    cmake --preset release -B build/bench -DZQ_BUILD_BENCHMARKS=ON -DZQ_BUILD_TESTS=OFF
quietly build/logs/bench-build.log cmake --build build/bench --target zq_bench
exec build/bench/bench/zq_bench "${options[@]}"
