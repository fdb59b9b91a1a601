#!/usr/bin/env bash
# Builds the default preset, runs every benchmark program and prints one table: each figure, its
# baseline measured in the same process, their ratio, the target and whether it holds.
# Usage: scripts/bench.sh [--json] [--out DIR]
#   --json     print the table as JSON
#   --out DIR  keep each program's JSON output (and its stderr) in DIR
# Progress goes to stderr, the table to stdout. About two minutes on a 2-core machine, after the
# build.
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

usage() { sed -n '2,8s/^# \{0,1\}//p' "$0"; }

json=()
out=""
while (($#)); do
    case $1 in
        --json) json=(--json) ;;
        --out) [[ $# -ge 2 ]] || { usage >&2; exit 2; }; out=$2; shift ;;
        -h | --help) usage; exit 0 ;;
        *) echo "bench: unknown option $1" >&2; usage >&2; exit 2 ;;
    esac
    shift
done

scripts/setup.sh >&2
cmake --preset default >/dev/null
# One job: a parallel build beside the measurements would only slow other work on the machine.
cmake --build --preset default -j1 >&2

if [[ -n $out ]]; then
    mkdir -p "$out"
    results=$(cd "$out" && pwd)
else
    results=$(mktemp -d)
    trap 'rm -rf "$results"' EXIT
fi

bench_dir=build/default/bench
# Every figure is the median of several runs, and the runs of a program's benchmarks are
# interleaved at random: load that comes and goes on the machine then weighs on a figure and its
# baseline alike instead of on whichever ran at the time.
common=(--benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true)
declare -A arguments=(
    [platform_bench]="--benchmark_repetitions=5 --benchmark_min_time=0.1"
    [naming_bench]="--benchmark_repetitions=5 --benchmark_min_time=0.1"
    [ndd_bench]="--benchmark_repetitions=3 --benchmark_min_time=0.1"
    [recorder_bench]="--benchmark_repetitions=3 --benchmark_min_time=0.1"
    [recorder_vs_spdlog]="--benchmark_repetitions=5"
)

programs=("$bench_dir"/*_bench)
[[ -x $bench_dir/recorder_vs_spdlog ]] && programs+=("$bench_dir/recorder_vs_spdlog")
for program in "${programs[@]}"; do
    name=$(basename "$program")
    echo "bench: running $name" >&2
    # shellcheck disable=SC2086  # the arguments are words on purpose
    if ! "$program" --benchmark_format=json "${common[@]}" ${arguments[$name]:-} \
        >"$results/$name.json" 2>"$results/$name.log"; then
        echo "bench: FAILED: $name; its output:" >&2
        tail -n 20 "$results/$name.log" >&2
        exit 1
    fi
done

"$bench_dir/bench_table" "${json[@]}" "$results"
