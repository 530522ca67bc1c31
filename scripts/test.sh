#!/usr/bin/env bash
# Installs what is needed, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
scripts/build.sh
# The Debian package, installed into a fresh Debian 12 root when the machine
# can make one (KP_PACKAGE_ROOT_TEST=0 checks only its contents). It runs
# first so that the test summary closes the output.
scripts/test_package.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j "$(nproc)"
