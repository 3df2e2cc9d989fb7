#!/usr/bin/env bash
# Flushes out flaky tests: runs suites again and again, each until it fails
# or N times, while another process keeps a core busy, so that a test which
# passes only when the scheduler is kind shows itself. Run scripts/test.sh
# first (it builds everything).
#   test-repeat.sh native [N]   the suites that start no program of their own:
#                               the linux and linux-tsan presets (default N 20)
#   test-repeat.sh live [N]     the live suites: the real programs on private
#                               X servers, buses and sound servers (default N 3)
#   test-repeat.sh wine [N]     every suite under Wine: the windows preset and
#                               the Windows programs played live (default N 3)
# Prints each run's result and the tests that failed; each run's whole
# output is kept in build/test-repeat-NAME.log.
set -euo pipefail
cd "$(dirname "$0")/.."

group=${1:-}
case "$group" in
  native) runs=${2:-20} ;;
  live | wine) runs=${2:-3} ;;
  *) echo "usage: $0 native|live|wine [N]" >&2; exit 2 ;;
esac
[[ "$runs" =~ ^[1-9][0-9]*$ ]] || { echo "test-repeat: N must be a positive number" >&2; exit 2; }

# The other core: busy for at most as long as the runs may take.
timeout 6h yes >/dev/null &
busy=$!
trap 'kill "$busy" 2>/dev/null; wait "$busy" 2>/dev/null || true' EXIT

failed=0
repeat() {  # repeat NAME CTEST-ARGUMENTS...
  local name=$1
  shift
  echo "=== $name: each test until it fails, at most $runs times"
  local started=$SECONDS status=0 log="build/test-repeat-$name.log"
  ctest "$@" --repeat "until-fail:$runs" >"$log" 2>&1 || status=$?
  grep -E 'tests passed|\*\*\*(Failed|Timeout|Exception)|Test +#[0-9]+: .*(Failed|Timeout)' "$log" | tail -n 20 |
    sed 's/^/    /' || true
  echo "    $name: exit $status after $((SECONDS - started)) s"
  [[ $status -eq 0 ]] || failed=1
}

# The linux preset's own label filter would win over one given here, so
# its suites are chosen from the build folder, with the preset's settings.
linux=(--test-dir build/linux --output-on-failure --timeout 600 --no-tests=error)
case "$group" in
  native)
    repeat linux-native "${linux[@]}" -LE 'live|wine'
    repeat linux-tsan --preset linux-tsan
    ;;
  live)
    repeat linux-live "${linux[@]}" -L live
    ;;
  wine)
    repeat windows --preset windows
    repeat windows-live --preset windows-live
    ;;
esac
if [[ $failed -eq 0 ]]; then
  echo "test-repeat: $group, $runs runs of every test, no failure"
else
  echo "test-repeat: $group: FAILED (see the tests above)"
fi
exit "$failed"
