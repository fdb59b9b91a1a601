#!/usr/bin/env bash
# Lists the dynamic symbols libcamtune exports and fails when one names anything the public
# headers (include/camtune, and on a host the host backend's framework types in
# src/platform/host/include/camtune) do not declare: every internal that leaks becomes ABI.
# A symbol passes when each part of its qualified name (namespaces, classes, the function or
# variable itself; template arguments and parameter lists aside) is a word of a public header.
# Usage: scripts/check-exports.sh [build-dir]   (default: build/default)
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$repo/build/default}
library=$build/src/libcamtune.so

fail() {
    echo "check-exports: FAILED: $*" >&2
    exit 1
}

[[ -f $library ]] || fail "$library missing: build the library first"

symbols=$(nm -D --defined-only -C "$library" | awk '$2 ~ /^[TWDBRVu]$/ { $1 = ""; $2 = ""; sub(/^ +/, ""); print }')
[[ -n $symbols ]] || fail "$library exports nothing"

# Words of the public headers after macro expansion (names such as genFileName_HW_AAO are
# pasted by a macro), from the preprocessed text of the headers themselves only.
public_dirs=("$repo/include" "$repo/src/platform/host/include")
mapfile -t headers < <(for dir in "${public_dirs[@]}"; do (cd "$dir" && find camtune -name '*.h'); done | sort)
public_words() {
    "${CXX:-g++}" -std=c++17 -E "${public_dirs[@]/#/-I}" "${headers[@]/#/-include}" -x c++ /dev/null |
        awk '/^# [0-9]+ "/ { ours = ($3 ~ /include\/camtune\//); next } ours' |
        grep -oE '[A-Za-z_][A-Za-z0-9_]*' | sort -u
}

# Every symbol part looked up among them. A standard-library template instantiated over a
# public type (its demangled name starts with that type: "NSCam::X* std::copy<...>") is the
# standard library's, not an internal of ours.
unknown=$(
    {
        public_words | sed 's/^/word /'
        sed 's/^/symbol /' <<<"$symbols"
    } | awk '
        $1 == "word" { words[$2] = 1; next }
        {
            symbol = substr($0, 8)
            name = symbol
            if (name ~ /^[^(<]*[*&] std::/) next
            sub(/^(vtable|typeinfo|typeinfo name|VTT|guard variable|non-virtual thunk|virtual thunk) (for|to) /, "", name)
            # Parameter lists and template arguments are not names of the library.
            sub(/\(.*/, "", name)
            while (gsub(/<[^<>]*>/, "", name) > 0) {}
            gsub(/\[abi:[a-z0-9]+\]/, "", name)
            count = split(name, parts, "::")
            for (i = 1; i <= count; ++i) {
                part = parts[i]
                sub(/^~/, "", part)
                if (part == "" || part ~ /^operator/) continue
                if (!(part in words)) { print symbol; break }
            }
        }')

count=$(wc -l <<<"$symbols")
if [[ -n $unknown ]]; then
    echo "check-exports: exported but not declared in include/camtune:" >&2
    sed 's/^/  /' <<<"$unknown" >&2
    fail "$(wc -l <<<"$unknown") of $count exported symbols are internals"
fi
echo "check-exports: $count exported symbols, each declared in include/camtune"
