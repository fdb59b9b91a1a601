#!/usr/bin/env bash
# Checks C++ formatting against the root .clang-format. On a branch with an origin/main it
# checks the files changed since the merge base; otherwise every tracked C++ file.
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

clang_format=${CLANG_FORMAT:-clang-format}
command -v "$clang_format" >/dev/null || { echo "check-format: FAILED: $clang_format not found" >&2; exit 1; }

cxx_patterns=('*.cpp' '*.cc' '*.h' '*.hpp')

if base=$(git merge-base HEAD origin/main 2>/dev/null); then
    scope="changed since $(git rev-parse --short "$base")"
    mapfile -t files < <(git diff --name-only --diff-filter=d "$base" -- "${cxx_patterns[@]}")
else
    scope="tracked"
    mapfile -t files < <(git ls-files -- "${cxx_patterns[@]}")
fi

if ((${#files[@]} == 0)); then
    echo "check-format: no $scope C++ files to check"
    exit 0
fi

if ! "$clang_format" --dry-run --Werror "${files[@]}"; then
    echo "check-format: FAILED: run '$clang_format -i' on the files above" >&2
    exit 1
fi
echo "check-format: ${#files[@]} $scope C++ files formatted"
