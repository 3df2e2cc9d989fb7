#!/usr/bin/env bash
# Shows the Windows program, zirvel-engine.exe, working under Wine on a
# private X server: Wine's own notepad standing in for the application, a
# small tray host for the notification area, the user played with XTest,
# and a PNG screenshot of every step in build/demo-windows.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh demo-windows
cmake --preset windows >/dev/null
cmake --build --preset windows --target zirvel-engine zirvel-say

out=build/demo-windows
# The Wine prefix stays between runs: making it takes a while.
find "$out" -mindepth 1 -maxdepth 1 ! -name wineprefix -exec rm -rf {} + 2>/dev/null || true
mkdir -p "$out/program" "$out/framebuffer"
built=build/windows/src/app
cp -r "$built/zirvel-engine.exe" "$built/zirvel-say.exe" "$built/icons" "$built/themes" "$out/program/"
cat >"$out/program/config.json" <<'JSON'
{"toggleKey": "f8", "sendDelay": 200, "keyHold": 30, "segmentColor": "#3498db",
 "gazeEnabled": false, "voiceEnabled": false}
JSON
cat >"$out/program/default.json" <<'JSON'
{"wheels": [
  {"name": "Notatnik", "actions": [
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

exec 3>"$out/display-number"
# -fbdir: the screen as the compositing manager painted it, in an XWD file.
Xvfb -displayfd 3 -fbdir "$out/framebuffer" -screen 0 1280x800x24 -nolisten tcp 2>/dev/null &
xvfb=$!
exec 3>&-
for _ in $(seq 100); do [[ -s "$out/display-number" ]] && break; sleep 0.05; done
export DISPLAY=":$(head -n1 "$out/display-number")"
export WINEPREFIX="$PWD/$out/wineprefix" WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
# No Mono or Gecko installers (they would ask for a download), no debugger.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
pids=("$xvfb")
echo "$DISPLAY" > /tmp/demo-display

if [[ ! -f "$WINEPREFIX/system.reg" ]]; then
  echo "Making the demo's Wine prefix (once)..."
  wine wineboot --init >/dev/null 2>&1
  wineserver --wait 2>/dev/null || true
fi

shot() {  # shot NAME: the whole screen as build/demo-windows/NAME.png
  sleep 0.4
  xwdtopnm "$out/framebuffer/Xvfb_screen0" 2>/dev/null | pnmtopng >"$out/$1.png"
  echo "  $out/$1.png"
}
say() { wine "$out/program/zirvel-say.exe" "$1" >>"$out/zirvel-say.log" 2>&1 || true; }
wait_for_window() {  # wait_for_window NAME: its X window id, once it exists
  local window=""
  for _ in $(seq 200); do
    window=$(xdotool search --name "$1" 2>/dev/null | head -n1) && [[ -n "$window" ]] && break
    sleep 0.1
  done
  echo "$window"
}

xcompmgr &                      # blends the translucent wheel with the desktop
pids+=($!)
# The notification area: Wine docks its tray icons into any XEmbed tray.
trayer --edge bottom --align right --widthtype request --height 32 --transparent false --tint 0x333333 &
pids+=($!)

wine notepad.exe >/dev/null 2>&1 &
notepad=$(wait_for_window 'Notepad')
# Narrow enough that the wheel's transparent centre shows the desktop.
xdotool windowsize "$notepad" 560 680 windowmove "$notepad" 30 30
(cd "$out/program" && exec wine zirvel-engine.exe) >"$out/zirvel-engine.log" 2>&1 &
# The engine is up once its main window answers a phrase.
for _ in $(seq 100); do
  wine "$out/program/zirvel-say.exe" "schowaj siatkę" >/dev/null 2>&1 && break
  sleep 0.3
done
# Into notepad's text, then the X focus on its window: without a window
# manager the keys would otherwise go to whatever lies under the pointer.
xdotool mousemove 200 200 click 1
xdotool windowfocus --sync "$notepad"

echo "Screenshots:"
shot 00-desktop
# The pointer waits on the desktop, pinned, while the wheel shows.
xdotool mousemove 1000 600 key F8
shot 01-wheel-shown
xdotool mousemove_relative -- 0 -120
shot 02-field-hovered
xdotool click 1
sleep 0.6
shot 03-function-typed
xdotool key F8
sleep 0.3
xdotool mousemove_relative -- 250 0
sleep 0.1                                     # a timer tick moves the virtual cursor
xdotool click 1                               # the right arrow: the next wheel
shot 04-next-wheel
xdotool key F8
say "pokaż siatkę"
shot 05-grid
say "siedem"
shot 06-grid-narrowed
say "kliknij"
