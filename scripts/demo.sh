#!/usr/bin/env bash
# The main job: builds the camtune tool with the default preset and runs it.
# Today that prints every system property the library reads, with its default and meaning.
# Usage: scripts/demo.sh [extra camtune props arguments]
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default --target camtune_cli
build/default/tools/camtune/camtune props "$@"
