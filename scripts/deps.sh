#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests and the tools need.
# Runs as root; does nothing slow when everything is already there.
set -euo pipefail
packages=(g++ cmake ninja-build pkgconf qt6-base-dev fonts-liberation xvfb xauth
          libsndfile1-dev libgtest-dev libgmock-dev libbenchmark-dev imagemagick
          clang-14 libclang-rt-14-dev chromium)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
