#!/usr/bin/env bash
# Installs what is needed, builds, and runs the program on the demo project.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
scripts/build.sh
demo=data/Projects/Demo.kpn
build/bin/kestrelpane-cli info "$demo"
build/bin/kestrelpane-cli actions "$demo"
