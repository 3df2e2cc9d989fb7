#!/usr/bin/env bash
# Builds the packages a user installs into build/packages/: the Debian
# package of the Linux program (zirvel_<version>_amd64.deb).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh test
scripts/fetch-recogniser.sh >/dev/null
cmake --preset linux >/dev/null
cmake --build --preset linux
(cd build/linux && cpack -G DEB)
ls -l build/packages/
