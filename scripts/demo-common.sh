# What both demos share; sourced with $out set to the demo's folder.

# write_program_files DIR FIRST_WHEEL: the demo's config.json, default.json
# (a typing wheel named FIRST_WHEEL and a game wheel) and voice.json.
write_program_files() {
  cat >"$1/config.json" <<'JSON'
{"toggleKey": "f8", "sendDelay": 200, "keyHold": 30, "segmentColor": "#3498db",
 "gazeEnabled": false, "voiceEnabled": false}
JSON
  cat >"$1/default.json" <<JSON
{"wheels": [
  {"name": "$2", "actions": [
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
  echo '{"actions": []}' >"$1/voice.json"
}

# start_private_display: Xvfb on a free display, exported as DISPLAY; its
# pid in $xvfb. -fbdir: the screen as the compositing manager painted it,
# in an XWD file the screenshots are taken from.
start_private_display() {
  mkdir -p "$out/framebuffer"
  exec 3>"$out/display-number"
  Xvfb -displayfd 3 -noreset -fbdir "$out/framebuffer" -screen 0 1280x800x24 -nolisten tcp +extension RANDR 2>/dev/null &
  xvfb=$!
  exec 3>&-
  for _ in $(seq 100); do [[ -s "$out/display-number" ]] && break; sleep 0.05; done
  export DISPLAY=":$(head -n1 "$out/display-number")"
}

shot() {  # shot NAME: the whole screen as $out/NAME.png
  sleep "${shot_settle:-0.3}"
  xwdtopnm "$out/framebuffer/Xvfb_screen0" 2>/dev/null | pnmtopng >"$out/$1.png"
  echo "  $out/$1.png"
}
