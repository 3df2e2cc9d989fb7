#!/usr/bin/env bash
# Builds Zirvel for this machine and starts it on your X display. The
# program directory (config.json, default.json, voice.json; created on the
# first start) is build/linux/src/app, where the program lives.
#
# Without a display it says so; scripts/demo.sh shows the program working
# on a private X server instead.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh run
scripts/fetch-recogniser.sh >/dev/null
cmake --preset linux >/dev/null
cmake --build --preset linux --target zirvel zirvel-activate zirvel-say

if [[ -z "${DISPLAY:-}" ]]; then
  echo "Zirvel needs an X11 display, and DISPLAY is not set." >&2
  echo "To watch it work without a desktop, run scripts/demo.sh (screenshots in build/demo)." >&2
  exit 1
fi
exec build/linux/src/app/zirvel "$@"
