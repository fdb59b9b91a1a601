#!/usr/bin/env bash
# Builds exactly what Android.bp describes, without an Android tree:
#  1. reads every module of Android.bp (its type, name, defaults and list properties such as
#     srcs, exclude_srcs, cflags, include folders, static_libs, header_libs, shared_libs,
#     version_script) and resolves each srcs glob and exclude_srcs against the tree;
#  2. compiles libcamtune's files with the Android backend against Debian's liblog and libcutils
#     headers and a stand-in for the camera framework module (scripts/android-framework: the
#     host's framework types, built as a library of their own), and links the shared library
#     (version script included, nothing left undefined);
#  3. checks that the device library defines none of the framework's types and carries nothing
#     of the host backend or of the test seams;
#  4. compiles the host modules (the host backend, the testing seams, lint) and links the test
#     binary and every fuzzer against the static libraries they name;
#  5. fails when a tracked source file is in neither the CMake build (compile_commands.json of
#     the given build folders) nor Android.bp, or a glob matches nothing.
# Usage: scripts/check-android-bp.sh BUILD-DIR...   (e.g. build/default build/fuzz)
set -euo pipefail

repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"
(($# > 0)) || { echo "usage: scripts/check-android-bp.sh BUILD-DIR..." >&2; exit 2; }
builds=("$@")
cxx=${CXX_ANDROID_CHECK:-clang++}
jobs=$(nproc)

fail() {
    echo "check-android-bp: FAILED: $*" >&2
    exit 1
}

for build in "${builds[@]}"; do
    [[ -f $build/compile_commands.json ]] || fail "$build/compile_commands.json missing: configure first"
done
android_headers=/usr/include/android
stub_headers=$repo/scripts/android-stub-include
framework_headers=$repo/scripts/android-framework/include
libdir=/usr/lib/$(gcc -print-multiarch)/android

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Android.bp as "module<TAB>property<TAB>value" lines; "type" and "defaults" included.
awk '
    function flush_list(   text, value) {
        text = list_text
        while (match(text, /"[^"]*"/)) {
            value = substr(text, RSTART + 1, RLENGTH - 2)
            print name "\t" list_name "\t" value
            text = substr(text, RSTART + RLENGTH)
        }
        list_name = ""
    }
    { sub(/\/\/.*/, "") }
    /^[a-z_]+ *\{/ { type = $1; name = ""; pending = ""; next }
    /^\}/ { type = ""; next }
    type != "" && /^    name: *"/ {
        match($0, /"[^"]*"/); name = substr($0, RSTART + 1, RLENGTH - 2)
        print name "\ttype\t" type
        next
    }
    type != "" && /^    [a-z_]+: *\[/ {
        list_name = $1; sub(/:$/, "", list_name); list_text = $0
        if ($0 ~ /\]/) flush_list()
        next
    }
    type != "" && /^    [a-z_]+: *(true|false),?$/ {
        property = $1; sub(/:$/, "", property); value = $2; sub(/,$/, "", value)
        print name "\t" property "\t" value
        next
    }
    type != "" && /^    version_script: *"/ {
        match($0, /"[^"]*"/); print name "\tversion_script\t" substr($0, RSTART + 1, RLENGTH - 2)
        next
    }
    list_name != "" { list_text = list_text $0; if ($0 ~ /\]/) flush_list() }
' Android.bp >"$work/modules.tsv"
# Every module is named before its lists in this file, so no line lacks a module.
! grep -q $'^\t' "$work/modules.tsv" || fail "Android.bp: a module lists properties before its name"

# values MODULE PROPERTY: the property's values, those of the module's defaults first.
values() {
    local module=$1 property=$2 parent
    while read -r parent; do values "$parent" "$property"; done < <(
        awk -F'\t' -v m="$module" '$1 == m && $2 == "defaults" { print $3 }' "$work/modules.tsv")
    awk -F'\t' -v m="$module" -v p="$property" '$1 == m && $2 == p { print $3 }' "$work/modules.tsv"
}

# own MODULE PROPERTY: the module's own values only (its type, say).
own() {
    awk -F'\t' -v m="$1" -v p="$2" '$1 == m && $2 == p { print $3 }' "$work/modules.tsv"
}

# sources MODULE: its srcs globs resolved against the tree, exclude_srcs taken out.
sources() {
    local module=$1 pattern file
    local -A excluded=()
    while read -r pattern; do
        for file in $pattern; do excluded[$file]=1; done
    done < <(values "$module" exclude_srcs)
    while read -r pattern; do
        local matched=0
        for file in $pattern; do
            [[ -f $file ]] || continue
            matched=1
            [[ -n ${excluded[$file]:-} ]] || echo "$file"
        done
        ((matched)) || fail "$module: srcs pattern $pattern matches no file"
    done < <(values "$module" srcs)
}

# is_host MODULE: true for a module built for the host only.
is_host() {
    [[ $(own "$1" type) == *_host* ]] || [[ $(values "$1" device_supported) == false ]]
}

# flags MODULE [DEPENDENCY...]: compiler flags of MODULE, with the exported include folders of
# the static libraries it uses. A device module sees the Android headers and the framework's.
flags() {
    local module=$1 dir library
    shift
    printf '%s\n' -std=c++17 -fPIC
    if ! is_host "$module"; then
        printf '%s\n' -isystem "$android_headers" -isystem "$stub_headers" -I"$framework_headers"
    fi
    values "$module" cflags
    while read -r dir; do printf '%s\n' -I"$dir"; done < <(values "$module" local_include_dirs)
    for library in "$module" "$@"; do
        while read -r dir; do printf '%s\n' -I"$dir"; done < <(values "$library" export_include_dirs)
    done
}

# compile MODULE [DEPENDENCY...]: objects of MODULE's sources into $work/MODULE/, listed on stdout.
compile() {
    local module=$1 file object
    mapfile -t module_flags < <(flags "$@")
    mkdir -p "$work/$module"
    sources "$module" >"$work/$module.sources"
    while read -r file; do
        object=$work/$module/$(tr / _ <<<"$file").o
        echo "$cxx ${module_flags[*]} -c $file -o $object"
        echo "$object" >>"$work/$module.objects"
    done <"$work/$module.sources" >"$work/$module.commands"
    : >>"$work/$module.objects"
    # Commands carry no blanks inside arguments: every path of the tree is blank-free.
    xargs -P "$jobs" -I{} sh -c '{} || exit 255' <"$work/$module.commands" ||
        fail "$module: a source does not compile as Android.bp builds it"
}

[[ $(own libcamtune type) == cc_library_shared ]] || fail "Android.bp has no libcamtune"

# The property functions of Debian's libcutils are a host build's without system properties;
# stand-ins with their signatures let the links prove nothing else is missing.
cat >"$work/cutils_properties.cpp" <<'END'
#include <cutils/properties.h>
int property_get(const char*, char* value, const char*) { value[0] = '\0'; return 0; }
int32_t property_get_int32(const char*, int32_t value) { return value; }
int property_set(const char*, const char*) { return 0; }
END
"$cxx" -std=c++17 -fPIC -isystem "$android_headers" -isystem "$stub_headers" \
    -c "$work/cutils_properties.cpp" -o "$work/cutils_properties.o"
system_libs=("$work/cutils_properties.o" -L"$libdir" -llog -lcutils -pthread)

# The framework module libcamtune names, stood in for by the host's framework types.
framework_library=$(values camtune_framework shared_libs)
[[ -n $framework_library ]] || fail "Android.bp names no framework library in camtune_framework"
mapfile -t framework_sources < <(ls src/platform/host/framework/*.cpp)
"$cxx" -std=c++17 -fPIC -shared -Iinclude -Isrc/platform/host/include -Isrc \
    -o "$work/$framework_library.so" "${framework_sources[@]}" ||
    fail "building the stand-in framework library"

compile libcamtune
mapfile -t library_objects <"$work/libcamtune.objects"
version_script=$(values libcamtune version_script)
"$cxx" -shared -o "$work/libcamtune.so" "${library_objects[@]}" -Wl,--no-undefined \
    ${version_script:+-Wl,--version-script="$version_script"} \
    "$work/$framework_library.so" "${system_libs[@]}" ||
    fail "libcamtune does not link as Android.bp builds it"

# The device library uses the framework's types but defines none of their out-of-line
# functions (the headers' inline ones it may), and nothing of the host backend or of the test
# seams is in it.
symbol_names() { nm -C --defined-only "$1" | awk -v types="$2" 'index(types, $2) { $1 = ""; $2 = ""; sub(/^ +/, ""); print }' | sort -u; }
redefined=$(comm -12 <(symbol_names "$work/$framework_library.so" T) <(symbol_names "$work/libcamtune.so" TtWw))
[[ -z $redefined ]] || fail "the device library defines framework functions: $redefined"
host_only=$(nm -C "$work/libcamtune.so" | grep -E 'camtune::host::|camtune_testing_|::testing::' || true)
[[ -z $host_only ]] || fail "the device library carries host or test code: $host_only"
! strings "$work/libcamtune.so" | grep -q CAMTUNE_ROOT || fail "the device library reads CAMTUNE_ROOT"

# Host static libraries, then the binaries that use them.
declare -A archive=()
for library in $(awk -F'\t' '$2 == "type" && $3 ~ /^cc_library(_host)?_static$/ { print $1 }' "$work/modules.tsv"); do
    mapfile -t dependencies < <(values "$library" static_libs)
    compile "$library" "${dependencies[@]}"
    mapfile -t objects <"$work/$library.objects"
    ar rcs "$work/$library.a" "${objects[@]}"
    archive[$library]=$work/$library.a
done
linked=()
for binary in $(awk -F'\t' '$2 == "type" && ($3 ~ /^cc_test(_host)?$/ || $3 == "cc_fuzz") { print $1 }' "$work/modules.tsv"); do
    type=$(own "$binary" type)
    is_host "$binary" || fail "$binary is built for the device, which has no host stand-ins for its tests"
    mapfile -t dependencies < <(values "$binary" static_libs)
    compile "$binary" "${dependencies[@]}"
    mapfile -t objects <"$work/$binary.objects"
    archives=()
    for library in "${dependencies[@]}"; do
        [[ -n ${archive[$library]:-} ]] || fail "$binary uses $library, which Android.bp does not build"
        archives+=("${archive[$library]}")
    done
    extra=(-lgtest -lgtest_main)
    [[ $type == cc_fuzz ]] && extra=(-fsanitize=fuzzer)
    mkdir -p "$work/bin"
    "$cxx" -o "$work/bin/$binary" "${objects[@]}" "${archives[@]}" "${extra[@]}" -pthread ||
        fail "$binary does not link as Android.bp builds it"
    linked+=("$binary")
done

# Every tracked source is built by one of the two builds.
cat "$work"/*.sources | sort -u >"$work/android.list"
for build in "${builds[@]}"; do grep -o '"file": *"[^"]*"' "$build/compile_commands.json"; done | sed 's/.*"\([^"]*\)"$/\1/' |
    sed "s|^$repo/||" | sort -u >"$work/cmake.list"
# Sources built by their own steps: the consumer project and the Android backend's tests.
git ls-files "tests/consumer/*.cpp" >>"$work/cmake.list"
echo scripts/android-check/backend_test.cpp >>"$work/cmake.list"
orphans=$(git ls-files '*.cpp' | sort | comm -23 - <(sort -u "$work/cmake.list" "$work/android.list"))
[[ -z $orphans ]] || fail "tracked sources in neither the CMake build nor Android.bp: $orphans"

echo "check-android-bp: libcamtune ($(wc -l <"$work/libcamtune.sources") files) and" \
     "${linked[*]} build and link exactly as Android.bp says; every tracked source is built"
