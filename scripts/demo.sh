#!/usr/bin/env bash
# Shows Zirvel working on a private X server, for a machine without a
# desktop: the real program, a terminal standing in for a game, the user
# played with XTest, and a PNG screenshot of every step in build/demo.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh demo
cmake --preset linux >/dev/null
cmake --build --preset linux --target zirvel zirvel-say

out=build/demo
rm -rf "$out"
mkdir -p "$out/program" "$out/runtime"
chmod 700 "$out/runtime"
cp -r build/linux/src/app/zirvel build/linux/src/app/themes build/linux/src/app/icons build/linux/src/app/zirvel.ico "$out/program/"
cat >"$out/program/config.json" <<'JSON'
{"toggleKey": "f8", "sendDelay": 200, "keyHold": 30, "segmentColor": "#3498db",
 "gazeEnabled": false, "voiceEnabled": false}
JSON
cat >"$out/program/default.json" <<'JSON'
{"wheels": [
  {"name": "Terminal", "actions": [
    {"name": "Napisz zirvel", "steps": [{"key": "z"}, {"key": "i"}, {"key": "r"}, {"key": "v"}, {"key": "e"}, {"key": "l"}]},
    {"name": "Enter", "key": "enter"},
    {"name": "Spacja", "key": "space"},
    {"name": "Backspace", "key": "backspace"},
    {"name": "Tab", "key": "tab"},
    {"name": "Esc", "key": "esc"}]},
  {"name": "Gra", "actions": [
    {"name": "Skok", "key": "space"},
    {"name": "Przeładuj", "key": "r"},
    {"name": "Mapa", "key": "m"}]}]}
JSON
echo '{"actions": []}' >"$out/program/voice.json"

mkdir -p "$out/framebuffer"
exec 3>"$out/display-number"
# -fbdir: the screen as the compositing manager painted it, in an XWD file.
Xvfb -displayfd 3 -fbdir "$out/framebuffer" -screen 0 1280x800x24 -nolisten tcp +extension RANDR 2>/dev/null &
xvfb=$!
exec 3>&-
for _ in $(seq 100); do [[ -s "$out/display-number" ]] && break; sleep 0.05; done
export DISPLAY=":$(head -n1 "$out/display-number")"
export XDG_RUNTIME_DIR="$PWD/$out/runtime"
# The front-end's settings (theme, last wheels file) stay in the demo folder.
export XDG_CONFIG_HOME="$PWD/$out/settings"
pids=("$xvfb")
trap 'kill "${pids[@]}" 2>/dev/null || true' EXIT

shot() {  # shot NAME: the whole screen as build/demo/NAME.png
  sleep 0.3
  xwdtopnm "$out/framebuffer/Xvfb_screen0" 2>/dev/null | pnmtopng >"$out/$1.png"
  echo "  $out/$1.png"
}

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
