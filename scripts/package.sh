#!/usr/bin/env bash
# Builds the Debian package kestrelpane_<version>_<arch>.deb with CPack.
# The build folder is $KP_BUILD_DIR (default build/); the package lands in
# it. KP_SKIP_DEPS=1 skips installing the Debian packages the build needs.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir="${KP_BUILD_DIR:-build}"
[[ "${KP_SKIP_DEPS:-0}" == 1 ]] || scripts/deps.sh
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build_dir" -j "$(nproc)"
rm -f "$build_dir"/kestrelpane_*.deb
(cd "$build_dir" && cpack -G DEB >/dev/null)
deb=$(ls "$build_dir"/kestrelpane_*.deb)
echo "$deb"
