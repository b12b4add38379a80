#!/usr/bin/env bash
# Measures the effects anew, against OpenCV and by size and parameter, and puts the tables and the
# plots into docs/. It takes some minutes and wants a machine that does nothing else.
#   scripts/performance.sh [--runs N]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/quietly.sh
source scripts/quietly.sh

runs=9
case "$#:${1:-}" in
    0:) ;;
    2:--runs) runs=$2 ;;
    *)
        echo "usage: scripts/performance.sh [--runs N]" >&2
        exit 2
        ;;
esac

for needed in /usr/include/benchmark/benchmark.h /usr/include/opencv4/opencv2/xphoto.hpp; do
    if [[ ! -e $needed ]]; then
        echo "performance: install libbenchmark-dev, libopencv-dev and python3-matplotlib" >&2
        exit 1
    fi
done
use_ccache
results=build/performance
mkdir -p "$results"
quietly build/logs/performance-configure.log cmake --preset release -B build/bench \
    -DZQ_BUILD_BENCHMARKS=ON -DZQ_BENCH_OPENCV=ON -DZQ_BUILD_TESTS=OFF
quietly build/logs/performance-build.log cmake --build build/bench \
    --target zq_compare zq_costs zq_preview_bench
build/bench/bench/zq_compare --runs "$runs" >"$results/compare.md"
build/bench/bench/zq_preview_bench >"$results/preview.md"
build/bench/bench/zq_costs >"$results/costs.csv"
/usr/bin/python3 scripts/plot_performance.py "$results/costs.csv" docs

# put NAME: replaces what stands between the two marks of that name in the page.
put() {
    awk -v name="$1" -v file="$results/$1.md" '
        $0 == "<!-- end of " name " -->" { inside = 0 }
        !inside { print }
        $0 == "<!-- " name " -->" {
            inside = 1
            while ((getline line < file) > 0) print line
        }' docs/performance.md >"$results/page.md"
    mv "$results/page.md" docs/performance.md
}
put compare
put preview
