#!/usr/bin/env bash
# Runs the fuzzer on targets that the preset `fuzz` has built: all of them, or those that are named.
#   scripts/fuzz.sh SECONDS [TARGET...]
# What it learns stays in build/fuzz/corpus, what fails in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

programs=$PWD/build/fuzz/fuzz
work=$PWD/build/fuzz

fail() {
    echo "fuzz: $*" >&2
    exit 1
}

# run TARGET SECONDS
run() {
    local target=$1 seconds=$2 corpus=$work/corpus/$1 findings=$work/findings/$1 log=$work/$1.log
    local options=()
    # The windows' library keeps memory for as long as it lives; each look for leaks takes seconds.
    [[ $target == preview ]] && options+=(-detect_leaks=0)
    mkdir -p "$corpus" "$findings"
    if ! QT_LOGGING_RULES='*=false' "$programs/fuzz_$target" "$corpus" "$PWD/fuzz/corpus/$target" \
        -max_total_time="$seconds" -timeout=25 -rss_limit_mb=4096 -max_len=2048 -reload=0 \
        -artifact_prefix="$findings/" -print_final_stats=1 "${options[@]}" >"$log" 2>&1; then
        grep -aE 'does not hold|runtime error|ERROR|SUMMARY|Test unit' "$log" >&2 || tail -n 20 "$log" >&2
        fail "$target failed; the whole output is in $log"
    fi
    echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs"
}

if [[ ! ${1:-} =~ ^[0-9]+$ ]]; then
    echo "usage: scripts/fuzz.sh SECONDS [TARGET...]" >&2
    exit 2
fi
seconds=$1
shift
targets=("$@")
if ((${#targets[@]} == 0)); then
    targets=(fuzz/corpus/*/)
    targets=("${targets[@]%/}")
    targets=("${targets[@]##*/}")
fi
for target in "${targets[@]}"; do
    [[ -x $programs/fuzz_$target ]] || fail "there is no fuzz_$target: cmake --build --preset fuzz"
done
export programs work
export -f run fail
printf '%s\0' "${targets[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'set -e; run "$@"' run {} "$seconds"
