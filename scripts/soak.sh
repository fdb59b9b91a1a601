#!/usr/bin/env bash
# A long simulated session with a small byte limit, its resident memory sampled every second:
# the curve must be flat once the pools are warm. Prints the samples' start, middle and end.
# Usage: scripts/soak.sh [FRAMES] (default 10000); builds the default preset's tool first.
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
frames=${1:-10000}
[[ $frames =~ ^[1-9][0-9]*$ ]] || { echo "soak: FRAMES must be a positive number" >&2; exit 2; }
cd "$repo"
cmake --preset default >/dev/null
cmake --build --preset default --target camtune_cli >/dev/null
out=$(mktemp -d "${TMPDIR:-/tmp}/camtune-soak.XXXXXX")
trap 'rm -rf "$out"' EXIT

# Small frames keep the disk use to a few GB; 60 fps with a capture every 30 frames.
build/default/tools/camtune/camtune sim --frames "$frames" --fps 60 --capture-every 30 \
    --size 320x240 --raw 640x480 --limit 262144 -o "$out/root" --json >"$out/summary.json" &
pid=$!
samples=()
while kill -0 "$pid" 2>/dev/null; do
    rss=$(awk '/^VmRSS:/ { print $2 }' "/proc/$pid/status" 2>/dev/null || true)
    [[ -n $rss ]] && samples+=("$rss")
    sleep 1
done
wait "$pid" || { echo "soak: the session failed" >&2; cat "$out/summary.json" >&2; exit 1; }
count=${#samples[@]}
((count > 0)) || { echo "soak: no sample taken" >&2; exit 1; }
echo "soak: $frames frames, $count samples of resident memory (KiB):"
echo "  first ${samples[0]}, at 10% ${samples[count / 10]}, middle ${samples[count / 2]}," \
     "last ${samples[count - 1]}"
printf '%s\n' "${samples[@]}" | sort -n | awk '{ v[NR] = $1 } END { print "  min " v[1] ", max " v[NR] }'
grep -E '"(failed|written|records_dropped|lines_lost)"' "$out/summary.json" | tr -d ' ,' |
    paste -sd' ' | sed 's/^/  /'
