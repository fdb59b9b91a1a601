#!/usr/bin/env bash
# Everything CI holds the tree to: formatting, the device-build checks, every preset built and
# tested, and the installed package used from outside. Stops at the first failure.
set -euo pipefail

# Presets built and tested, in order.
PRESETS=(default asan tsan armhf fuzz)

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

started=$SECONDS
passed=0
failed=0
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT

# step <title> <command...>: runs one step, reports its duration, stops everything on failure.
step() {
    local title=$1 begin=$SECONDS
    shift
    echo
    echo "==> $title"
    if ! "$@"; then
        echo >&2
        echo "test-all: FAILED at step: $title" >&2
        exit 1
    fi
    echo "<== $title: ok ($((SECONDS - begin)) s)"
}

# Runs one preset's tests and adds its counts to the totals.
run_tests() {
    local preset=$1 log=$logs/ctest-$1.log summary total failures
    ctest --preset "$preset" 2>&1 | tee "$log" || return 1
    summary=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$log" | tail -1)
    [[ -n $summary ]] || { echo "test-all: no test summary from ctest ($preset)" >&2; return 1; }
    total=${summary##* out of }
    failures=$(sed -E 's/.* ([0-9]+) tests? failed.*/\1/' <<<"$summary")
    passed=$((passed + total - failures))
    failed=$((failed + failures))
}

step "install missing packages" scripts/setup.sh
step "format check" scripts/check-format.sh
step "Android backend check" scripts/check-android.sh
for preset in "${PRESETS[@]}"; do
    step "configure $preset" cmake --preset "$preset"
    step "build $preset" cmake --build --preset "$preset"
    step "test $preset" run_tests "$preset"
done
step "exported symbols" scripts/check-exports.sh "$repo/build/default"
step "Android.bp exact build" scripts/check-android-bp.sh "$repo/build/default" "$repo/build/fuzz"
step "installed-package consumer" scripts/check-consumer.sh "$repo/build/default"

echo
echo "test-all: every check passed in $((SECONDS - started)) s (presets: ${PRESETS[*]})"
echo "test-all: $passed passed, $failed failed"
