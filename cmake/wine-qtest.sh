#!/usr/bin/env bash
# Runs a Qt Test suite under Wine (through wine-run.sh) and prints its log.
# Under Wine a suite's plain-text log does not reach a piped stdout, so it
# is written to a file and shown from there.
#   wine-qtest.sh SUITE.exe [QTEST ARGS...]
set -uo pipefail
suite=$1; shift
log=$(mktemp --suffix=.txt)
trap 'rm -f "$log"' EXIT
"$(dirname "$0")/wine-run.sh" "$suite" -o "Z:$log,txt" "$@"
status=$?
cat "$log"
exit $status
