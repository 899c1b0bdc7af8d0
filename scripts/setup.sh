#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the screenshots need.
set -euo pipefail

packages=(
    cmake ninja-build g++ binutils pkg-config
    qtbase5-dev qtbase5-dev-tools qttools5-dev-tools
    qt6-base-dev qt6-base-dev-tools qt6-l10n-tools
    libboost-dev
    libbenchmark-dev clang libclang-rt-14-dev
    xvfb xauth
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done

if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}"
    SUDO=""
    [[ $(id -u) -eq 0 ]] || SUDO="sudo"
    $SUDO apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
