#!/usr/bin/env bash
# Makes the pictures of docs/screenshots anew: runs the tests that take
# them (on private X servers) and copies each picture the documents use
# from where its test put it. A picture in docs/screenshots that no test
# takes is an error. Run scripts/test.sh first (it builds everything).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-dependencies.sh screenshots

linux=build/linux/tests
ctest --test-dir build/linux -R '^main_window_live_test$' --output-on-failure >/dev/null
"$linux/x11/x11_program_tests" --gtest_filter='CompositedTest.*' >/dev/null
"$linux/x11/x11_gaze_tests" --gtest_filter='LiveGazeTest.*' >/dev/null
"$linux/x11/x11_switch_scan_tests" --gtest_filter='TwoSwitchTest.*' >/dev/null

taken=("$linux/frontend/screenshots" "$linux/x11/screenshots")
missing=0
for picture in docs/screenshots/*.png; do
  name=$(basename "$picture")
  found=""
  for folder in "${taken[@]}"; do
    [[ -f "$folder/$name" ]] && found="$folder/$name"
  done
  if [[ -z "$found" ]]; then
    echo "update-screenshots: no test takes $name" >&2
    missing=1
    continue
  fi
  # The tests write their pictures uncompressed.
  pngtopnm "$found" | pnmtopng -compression 9 >"$picture"
  echo "$picture <- $found"
done
exit "$missing"
