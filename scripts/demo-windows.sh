#!/usr/bin/env bash
# Shows the Windows program, zirvel-engine.exe, working under Wine on a
# private X server: Wine's own notepad standing in for the application, a
# small tray host for the notification area, the user played with XTest,
# and a PNG screenshot of every step in build/demo-windows.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/demo-common.sh
shot_settle=0.4

scripts/install-dependencies.sh demo-windows
cmake --preset windows >/dev/null
cmake --build --preset windows --target zirvel-engine zirvel-say

out=build/demo-windows
# The Wine prefix stays between runs: making it takes a while.
find "$out" -mindepth 1 -maxdepth 1 ! -name wineprefix -exec rm -rf {} + 2>/dev/null || true
mkdir -p "$out/program"
built=build/windows/src/app
cp -r "$built/zirvel-engine.exe" "$built/zirvel-say.exe" "$built/icons" "$built/themes" "$out/program/"
write_program_files "$out/program" Notatnik

start_private_display
export WINEPREFIX="$PWD/$out/wineprefix" WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
# No Mono or Gecko installers (they would ask for a download), no debugger.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
pids=("$xvfb")
trap 'wineserver -k 2>/dev/null || true; kill "${pids[@]}" 2>/dev/null || true' EXIT

if [[ ! -f "$WINEPREFIX/system.reg" ]]; then
  echo "Making the demo's Wine prefix (once)..."
  wine wineboot --init >/dev/null 2>&1
  wineserver --wait 2>/dev/null || true
fi

say() { wine "$out/program/zirvel-say.exe" "$1" >>"$out/zirvel-say.log" 2>&1 || true; }
wait_for_window() {  # wait_for_window NAME: its X window id, once it exists
  local window=""
  for _ in $(seq 200); do
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n1) && [[ -n "$window" ]] && break
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
xdotool windowsize --sync "$notepad" 560 680 windowmove --sync "$notepad" 30 30
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
# Wine treats the full-screen grid as a window for a window manager and,
# with none here, waits about two seconds for one before hiding it.
sleep 3
shot 07-clicked
# The tray icon sits at the right end of the tray host at the bottom.
xdotool mousemove 1268 784 click 3
sleep 1
shot 08-tray-menu
xdotool mousemove_relative -- -40 -22 click 1  # "Pokaż okno"
sleep 0.5
shot 09-help-window
xdotool mousemove 1268 784 click 3
sleep 1
xdotool mousemove_relative -- -40 4 click 1    # "Zakończ"
for _ in $(seq 50); do
  pgrep -f 'zirvel-engine.exe' >/dev/null || break
  sleep 0.2
done
shot 10-ended
if pgrep -f 'zirvel-engine.exe' >/dev/null; then
  echo "zirvel-engine.exe did not end after Zakończ" >&2
  exit 1
fi
echo "zirvel-engine.exe ended after Zakończ."
