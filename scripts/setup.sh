#!/usr/bin/env bash
# Installs the Debian packages the project builds, tests and runs with.
# Quick when everything is already there: apt-get runs only for missing packages.
set -euo pipefail

packages=(
  cmake g++ make pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-tools-dev libqt6opengl6-dev libgl-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  fonts-dejavu-core xvfb xauth xdotool clang libclang-rt-14-dev
  python3-pyatspi at-spi2-core dbus-x11
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  sudo_cmd=()
  [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
