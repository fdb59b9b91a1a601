#!/usr/bin/env bash
# Keeps the device build honest without an Android tree:
#  1. the Android backend compiles against the real liblog and libcutils headers;
#  2. each file of src/platform/android defines exactly the port functions its namesake in
#     src/platform/host defines (the host's camtune::host helpers aside; host/framework and
#     host/testing have no device counterpart: a device has the framework's types and no seams);
#  3. it behaves as the port promises (scripts/android-check/backend_test.cpp, against recording
#     fakes of liblog, libcutils properties and atrace, and on real files).
# scripts/check-android-bp.sh builds what Android.bp lists, exactly.
# Usage: scripts/check-android.sh
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

android_headers=/usr/include/android
# Debian's cutils/properties.h includes bionic's <sys/system_properties.h>, which no Debian
# package ships; this folder holds a stand-in for this check only.
stub_headers=$repo/scripts/android-stub-include
cxx=${CXX_ANDROID_CHECK:-clang++}
flags=(-std=c++17 -Wall -Wextra -Werror -I"$repo/include" -I"$repo/src"
       -I"$repo/src/platform/host/testing/include"
       -isystem "$android_headers" -isystem "$stub_headers")

fail() {
    echo "check-android: FAILED: $*" >&2
    exit 1
}

for header in android/log.h cutils/properties.h cutils/trace.h; do
    [[ -f $android_headers/$header ]] ||
        fail "$android_headers/$header missing (install android-liblog-dev android-libcutils-dev)"
done

shopt -s nullglob
android_sources=(src/platform/android/*.cpp)
((${#android_sources[@]} > 0)) || fail "no sources in src/platform/android"
for source in "${android_sources[@]}"; do
    "$cxx" "${flags[@]}" -fsyntax-only "$source" || fail "$source does not compile for Android"
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Global functions a backend file defines, minus the host-only namespace.
defined_symbols() {
    local source=$1 object
    object=$work/$(echo "$source" | tr / _).o
    "$cxx" "${flags[@]}" -c "$source" -o "$object" || fail "$source does not compile"
    nm -C --defined-only -g "$object" | awk '$2 == "T" { $1 = ""; $2 = ""; print }' |
        sed 's/^ *//' | grep -v '^camtune::host::' | sort || true
}

for host_source in src/platform/host/*.cpp; do
    name=$(basename "$host_source")
    android_source=src/platform/android/$name
    [[ -f $android_source ]] || fail "$host_source has no Android counterpart $android_source"
    if ! diff <(defined_symbols "$host_source") <(defined_symbols "$android_source") \
            >"$work/diff"; then
        echo "check-android: host (<) and Android (>) backends differ in $name:" >&2
        cat "$work/diff" >&2
        fail "backend functions out of step"
    fi
done
for android_source in "${android_sources[@]}"; do
    [[ -f src/platform/host/$(basename "$android_source") ]] ||
        fail "$android_source has no host counterpart"
done

"$cxx" "${flags[@]}" -fsanitize=address,undefined -fno-sanitize-recover=all \
        -o "$work/backend_test" scripts/android-check/backend_test.cpp "${android_sources[@]}" src/platform/fs.cpp \
        -lgtest -lgtest_main -pthread || fail "building the Android backend tests"
"$work/backend_test" --gtest_brief=1 || fail "Android backend tests"

echo "check-android: Android backend compiles, matches the host backend and behaves as the port says"
