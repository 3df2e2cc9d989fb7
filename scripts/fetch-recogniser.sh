#!/usr/bin/env bash
# Fetches the speech recogniser library once into the cache: the npm package
# vosk 0.3.39 ships ready builds of libvosk for Linux and for Windows
# (nothing is compiled; its Node.js part is not used). The build puts the
# library beside the programs. The speech model is not fetched: it comes
# from the recogniser's own site (see the README).
#   fetch-recogniser.sh          prints the folder that holds lib/
set -euo pipefail

version=0.3.39
cache="${XDG_CACHE_HOME:-$HOME/.cache}/zirvel"
target="$cache/vosk-$version"
if [[ -f "$target/lib/linux-x86_64/libvosk.so" && -f "$target/lib/win-x86_64/libvosk.dll" ]]; then
  echo "$target"
  exit 0
fi

if ! command -v npm >/dev/null; then
  echo "fetch-recogniser: npm is missing (install-dependencies.sh installs it)" >&2
  exit 1
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$work" && npm pack --loglevel=error "vosk@$version" >/dev/null) ||
  { echo "fetch-recogniser: npm could not fetch vosk@$version (its message is above)" >&2; exit 1; }
mkdir -p "$work/unpacked" "$cache"
tar -xzf "$work/vosk-$version.tgz" -C "$work/unpacked" --strip-components=1 \
  --exclude='package/lib/osx-*' package/lib package/package.json
rm -rf "$target"
mv "$work/unpacked" "$target"
echo "$target"
