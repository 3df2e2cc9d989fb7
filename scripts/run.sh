#!/usr/bin/env bash
# Builds Zirvel for this machine and runs it. The program directory (where
# config.json, default.json and voice.json live) is build/linux/run.
#
# The desktop program is not built yet; for now this creates the first-run
# files exactly as the engine does and checks them with zirvel-check.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh run
cmake --preset linux >/dev/null
cmake --build --preset linux --target zirvel-check

program_dir=build/linux/run
mkdir -p "$program_dir"
exec build/linux/src/tools/zirvel-check --init "$program_dir"
