#!/usr/bin/env bash
# Installs a built camtune into a scratch prefix, then configures, builds and runs the
# out-of-tree consumer in tests/consumer against that installed tree only.
# Usage: scripts/check-consumer.sh [build-dir]   (default: build/default)
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$repo/build/default}

fail() {
    echo "check-consumer: FAILED: $*" >&2
    exit 1
}

[[ -f $build/CMakeCache.txt ]] || fail "$build is not a configured build directory"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >"$work/install.log" ||
    { cat "$work/install.log" >&2; fail "install from $build"; }
[[ -f $work/prefix/include/camtune/platform/properties.h ]] || fail "public headers not installed"

cmake -S "$repo/tests/consumer" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/configure.log" ||
    { cat "$work/configure.log" >&2; fail "find_package(camtune) against the installed tree"; }
cmake --build "$work/build" -j2 >"$work/build.log" ||
    { cat "$work/build.log" >&2; fail "building the consumer"; }
"$work/build/camtune_consumer" || fail "the consumer ran but camtune misbehaved"
"$work/build/camtune_consumer_test" || fail "camtune::testing's seams did not reach the library"
[[ -f $work/prefix/include/camtune/platform/testing.h ]] || fail "camtune/platform/testing.h not installed"
if [[ -x $work/prefix/bin/camtune ]]; then
    "$work/prefix/bin/camtune" --help >/dev/null || fail "the installed camtune tool does not run"
fi
echo "check-consumer: installed package found, linked and run"
