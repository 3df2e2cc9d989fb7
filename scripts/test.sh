#!/usr/bin/env bash
# Builds Zirvel for Linux and for Windows and runs every test: natively, and
# under Wine on a private X server for the Windows build, whose programs
# are then played live from the Linux build.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh test
scripts/fetch-recogniser.sh >/dev/null
# Qt for Windows (Zirvel.exe): unpacked from the ready archive, or built once.
scripts/build-qt-windows.sh >/dev/null

# fuzz: the readers of outside input under AddressSanitizer and
# UndefinedBehaviorSanitizer, replaying every known input once.
for preset in linux linux-tsan fuzz windows; do
  echo "=== $preset: configure and build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  echo "=== $preset: tests"
  ctest --preset "$preset"
done
echo "=== windows-live: the Windows programs under Wine"
ctest --preset windows-live
