#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the tests and the tools need.
# Runs as root; does nothing slow when everything is already there.
set -euo pipefail
packages=(g++ cmake ninja-build pkgconf qt6-base-dev fonts-liberation xvfb xauth
          libsndfile1-dev libgtest-dev libgmock-dev libbenchmark-dev imagemagick
          clang-14 libclang-rt-14-dev chromium
          librsvg2-bin dpkg-dev lintian debootstrap)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
# The player's browser tests drive Chromium from Node (playwright-core, used
# only as a client of the system's Chromium; it downloads no browser).
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends nodejs npm >/dev/null
fi
browser_tests="$(dirname "$0")/../tests/player/browser"
if [ ! -d "$browser_tests/node_modules/playwright-core" ]; then
  (cd "$browser_tests" && npm ci --no-audit --no-fund --loglevel=error >/dev/null)
fi
