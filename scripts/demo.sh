#!/usr/bin/env bash
# Shows Zirvel working on a private X server, for a machine without a
# desktop: the real program, a terminal standing in for a game, the user
# played with XTest, and a PNG screenshot of every step in build/demo.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/demo-common.sh

scripts/install-dependencies.sh demo
cmake --preset linux >/dev/null
cmake --build --preset linux --target zirvel zirvel-say

out=build/demo
rm -rf "$out"
mkdir -p "$out/program" "$out/runtime"
chmod 700 "$out/runtime"
cp -r build/linux/src/app/zirvel build/linux/src/app/themes build/linux/src/app/icons build/linux/src/app/zirvel.ico "$out/program/"
write_program_files "$out/program" Terminal

start_private_display
export XDG_RUNTIME_DIR="$PWD/$out/runtime"
# The front-end's settings (theme, last wheels file) stay in the demo folder.
export XDG_CONFIG_HOME="$PWD/$out/settings"
pids=("$xvfb")
trap 'kill "${pids[@]}" 2>/dev/null || true' EXIT

xcompmgr &                      # blends the translucent wheel with the desktop
pids+=($!)

"$out/program/zirvel" >"$out/zirvel.log" 2>&1 &
pids+=($!)
for _ in $(seq 100); do [[ -S "$out/runtime/ZirvelEngineRunning" ]] && break; sleep 0.05; done

echo "Screenshots:"
sleep 0.5
shot 00-main-window
# The game opens over Zirvel's window, as it would on a desktop.
xterm -geometry 90x24+60+60 -fa 'DejaVu Sans Mono' -fs 12 -title 'Gra (xterm)' &
pids+=($!)
sleep 1
xdotool search --name 'Gra \(xterm\)' windowfocus --sync
shot 01-desktop
xdotool mousemove 640 400 key F8
shot 02-wheel-shown
xdotool mousemove_relative -- 0 -120
shot 03-field-hovered
xdotool click 1
sleep 0.6
shot 04-function-typed
xdotool key F8
sleep 0.2
xdotool mousemove_relative -- 250 0 click 1   # the right arrow: the next wheel
shot 05-next-wheel
xdotool key F8
build/linux/src/app/zirvel-say "pokaż siatkę" >/dev/null
shot 06-grid
build/linux/src/app/zirvel-say "siedem" >/dev/null
shot 07-grid-narrowed
build/linux/src/app/zirvel-say "kliknij" >/dev/null
shot 08-clicked
