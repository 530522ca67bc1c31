#!/usr/bin/env bash
# Installs what is needed, builds, and starts the designer on the demo
# project. Without a display it runs on a virtual one (xvfb-run), where
# it can be looked at with screenshots.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
scripts/build.sh
demo="$PWD/data/Projects/Demo.kpn"
if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
  exec build/bin/kestrelpane "$demo"
fi
echo "No display: starting the designer on a virtual screen (Ctrl+C ends it)."
exec xvfb-run -a -s "-screen 0 1280x1024x24" build/bin/kestrelpane "$demo"
