#!/usr/bin/env bash
# The main job: builds the camtune tool with the default preset and runs a simulated camera
# session (90 frames at 30 fps, one sensor, a capture every 30 frames) that dumps into
# ./camtune-out, then prints what it wrote and where.
# Usage: scripts/demo.sh [camtune sim options, e.g. -o DIR --frames 300 --fps 0]
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default --target camtune_cli
build/default/tools/camtune/camtune sim "$@"
