#!/usr/bin/env bash
# Keeps the device build honest without an Android tree:
#  1. the Android backend compiles against the real liblog and libcutils headers;
#  2. it defines exactly the port functions the host backend defines (host-only helpers aside);
#  3. it behaves as the port promises (scripts/android-check/backend_test.cpp, against recording
#     fakes of liblog, libcutils properties and atrace);
#  4. Android.bp lists every source and test folder;
#  5. given a host build folder, the library's objects link with the Android backend instead of
#     the host one, against Debian's liblog and libcutils, with no symbol left undefined.
# Usage: scripts/check-android.sh [build-dir]
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

android_headers=/usr/include/android
# Debian's cutils/properties.h includes bionic's <sys/system_properties.h>, which no Debian
# package ships; this folder holds a stand-in for this check only.
stub_headers=$repo/scripts/android-stub-include
cxx=${CXX_ANDROID_CHECK:-clang++}
flags=(-std=c++17 -Wall -Wextra -Werror -I"$repo/include" -I"$repo/src"
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
        -o "$work/backend_test" scripts/android-check/backend_test.cpp "${android_sources[@]}" \
        -lgtest -lgtest_main -pthread || fail "building the Android backend tests"
"$work/backend_test" --gtest_brief=1 || fail "Android backend tests"

# Every folder that holds sources or tests must be in the device build.
for folder in src/*/ tests/*/; do
    folder=${folder%/}
    case $folder in
        src/platform | tests/support | tests/consumer | tests/tools | tests/lint) continue ;;
    esac
    files=("$folder"/*.cpp)
    ((${#files[@]} > 0)) || continue
    pattern="\"$folder/*.cpp\""
    [[ $folder == tests/* ]] && pattern="\"$folder/*_test.cpp\""
    grep -qF "$pattern" Android.bp || fail "Android.bp does not list $pattern"
done

linked=""
if (($# > 0)); then
    objects_dir=$1/src/CMakeFiles/camtune_objects.dir
    [[ -d $objects_dir ]] || fail "$objects_dir missing: build the library first"
    mapfile -t objects < <(find "$objects_dir" -name '*.o' ! -path '*/platform/host/*' | sort)
    for source in "${android_sources[@]}"; do
        objects+=("$work/device_$(basename "$source").o")
        "$cxx" "${flags[@]}" -fPIC -c "$source" -o "${objects[-1]}" || fail "$source"
    done
    # Debian's libcutils is a host build without the system-property functions; stand-ins
    # with their signatures let the link prove nothing else is missing.
    cat >"$work/cutils_properties.cpp" <<'END'
#include <cutils/properties.h>
int property_get(const char*, char* value, const char*) { value[0] = '\0'; return 0; }
int32_t property_get_int32(const char*, int32_t value) { return value; }
int property_set(const char*, const char*) { return 0; }
END
    objects+=("$work/cutils_properties.o")
    "$cxx" "${flags[@]}" -fPIC -c "$work/cutils_properties.cpp" -o "${objects[-1]}" ||
        fail "cutils property stand-ins"
    "$cxx" -shared -o "$work/libcamtune.so" "${objects[@]}" -Wl,--no-undefined \
            -L/usr/lib/"$(gcc -print-multiarch)"/android -llog -lcutils -pthread ||
        fail "the library does not link with the Android backend (host-only code used?)"
    linked="; the library links with it"
fi

echo "check-android: Android backend compiles and matches the host backend$linked;" \
     "Android.bp is complete"
