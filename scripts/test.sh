#!/usr/bin/env bash
# Installs what is needed, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j "$(nproc)"
