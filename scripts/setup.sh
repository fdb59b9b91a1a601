#!/usr/bin/env bash
# Installs the Debian packages camtune's builds and checks need, when any is missing.
# Runs as root (or through sudo); does nothing when everything is already there.
set -euo pipefail

packages=(
    git cmake ninja-build g++ clang clang-format libclang-rt-14-dev
    libgtest-dev googletest libbenchmark-dev
    libcli11-dev nlohmann-json3-dev libspdlog-dev
    g++-arm-linux-gnueabihf qemu-user
    android-liblog-dev android-libcutils-dev
    libpng-dev libtiff-dev libraw-dev chromium
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ $status == "install ok installed" ]] || missing+=("$package")
done

if ((${#missing[@]} == 0)); then
    echo "setup: all build packages present"
    exit 0
fi

echo "setup: installing ${missing[*]}"
sudo=()
if ((EUID != 0)); then
    command -v sudo >/dev/null || { echo "setup: FAILED: run as root to install ${missing[*]}" >&2; exit 1; }
    sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -q
"${sudo[@]}" apt-get install -y -q "${missing[@]}"
