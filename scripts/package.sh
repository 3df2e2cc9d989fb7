#!/usr/bin/env bash
# Builds the packages a user installs into build/packages/: the Debian
# package of the Linux program (zirvel_<version>_amd64.deb), and the
# Windows portable zip and per-user installer (Zirvel-<version>-win64.zip,
# Zirvel-<version>-win64.exe) of the cross-built Windows programs.
# With ZIRVEL_SIGN_CERT and ZIRVEL_SIGN_KEY set, every Windows program and
# library, the installer and the uninstaller are signed (docs/building.md,
# "Signing").
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh test
scripts/fetch-recogniser.sh >/dev/null
scripts/build-qt-windows.sh >/dev/null

cmake --preset linux >/dev/null
cmake --build --preset linux
(cd build/linux && cpack -G DEB)

cmake --preset windows >/dev/null
cmake --build --preset windows
(cd build/windows && cpack -D CPACK_OUTPUT_FILE_PREFIX="$PWD/../packages")

ls -l build/packages/
