#!/usr/bin/env bash
# Runs a Windows program under Wine on a private X server, with a private
# Wine prefix inside the build directory, so that tests never touch the
# developer's desktop or their own Wine set-up.
#   wine-run.sh PROGRAM.exe [ARGS...]   run one program
#   wine-run.sh --prepare               create the prefix (first use is slow)
set -euo pipefail

build_dir=${ZIRVEL_BUILD_DIR:-$PWD}
while [[ ! -f "$build_dir/CMakeCache.txt" && "$build_dir" != / ]]; do build_dir=$(dirname "$build_dir"); done
[[ -f "$build_dir/CMakeCache.txt" ]] || build_dir=$PWD

export WINEPREFIX="$build_dir/wineprefix"
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win64
# No Mono or Gecko installers: they would ask for a download.
export WINEDLLOVERRIDES="mscoree,mshtml="
export LC_ALL=C.UTF-8

for program in Xvfb wine; do
  command -v "$program" >/dev/null ||
    { echo "wine-run: $program is not installed; scripts/install-dependencies.sh test installs it" >&2; exit 1; }
done
wine_bin=$(command -v wine64 || command -v wine)

start_private_x() {
  local fd_file
  fd_file=$(mktemp)
  Xvfb -displayfd 3 -noreset -screen 0 1280x1024x24 -nolisten tcp 3>"$fd_file" >/dev/null 2>&1 &
  xvfb_pid=$!
  for _ in $(seq 1 100); do
    [[ -s "$fd_file" ]] && break
    sleep 0.05
  done
  [[ -s "$fd_file" ]] || { echo "wine-run: Xvfb did not start" >&2; exit 1; }
  export DISPLAY=":$(head -n1 "$fd_file")"
  rm -f "$fd_file"
}

stop_private_x() {
  [[ -n "${xvfb_pid:-}" ]] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
  return 0
}

xvfb_pid=
trap stop_private_x EXIT
start_private_x

if [[ "${1:-}" == "--prepare" ]]; then
  "$wine_bin" wineboot --init >/dev/null 2>&1
  WINEPREFIX="$WINEPREFIX" wineserver --wait 2>/dev/null || true
  [[ -f "$WINEPREFIX/system.reg" ]] || { echo "wine-run: prefix not created" >&2; exit 1; }
  echo "Wine prefix ready: $WINEPREFIX"
  exit 0
fi

"$wine_bin" "$@"
