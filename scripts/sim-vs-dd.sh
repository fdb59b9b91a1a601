#!/usr/bin/env bash
# Throughput of a simulated session against a plain dd of the same bytes into the same folder.
# Runs alternate, each after a sync and a settle pause, so that neither inherits the other's
# dirty pages; the medians of the runs are compared.
# Usage: scripts/sim-vs-dd.sh [RUNS] (default 5); builds the default preset's tool first.
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
runs=${1:-5}
[[ $runs =~ ^[1-9][0-9]*$ ]] || { echo "sim-vs-dd: RUNS must be a positive number" >&2; exit 2; }
cd "$repo"
cmake --preset default >/dev/null
cmake --build --preset default --target camtune_cli >/dev/null
camtune=build/default/tools/camtune/camtune
out=$(mktemp -d "${TMPDIR:-/tmp}/camtune-sim-vs-dd.XXXXXX")
trap 'rm -rf "$out"' EXIT

median() { sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

sim_rates=() dd_rates=()
for ((i = 1; i <= runs; i++)); do
    rm -rf "$out/root"
    sync; sleep 1
    summary=$("$camtune" sim --frames 300 --fps 0 --producers 2 --writers 2 --size 1920x1080 \
        --format nv21 --raw 4000x2400 -o "$out/root" --json)
    bytes=$(grep -o '"bytes": [0-9]*' <<<"$summary" | grep -o '[0-9]*$')
    seconds=$(grep -o '"seconds": [0-9.e+-]*' <<<"$summary" | grep -o '[0-9.e+-]*$')
    sim_rates+=("$(awk -v b="$bytes" -v s="$seconds" 'BEGIN { printf "%.1f", b / s / 1e6 }')")
    sync; sleep 1
    start=$(date +%s.%N)
    dd if=/dev/zero of="$out/root/dd.bin" bs=1M count=$((bytes / 1048576)) status=none
    end=$(date +%s.%N)
    dd_rates+=("$(awk -v b="$bytes" -v t0="$start" -v t1="$end" \
        'BEGIN { printf "%.1f", int(b / 1048576) * 1048576 / (t1 - t0) / 1e6 }')")
    printf 'run %d: sim %8s MB/s   dd %8s MB/s\n' "$i" "${sim_rates[-1]}" "${dd_rates[-1]}"
done
sim=$(printf '%s\n' "${sim_rates[@]}" | median)
dd=$(printf '%s\n' "${dd_rates[@]}" | median)
printf 'median: sim %s MB/s, dd %s MB/s, ratio %.2f (target 0.80)\n' "$sim" "$dd" \
    "$(awk -v a="$sim" -v b="$dd" 'BEGIN { print a / b }')"
