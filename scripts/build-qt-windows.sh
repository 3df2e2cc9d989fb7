#!/usr/bin/env bash
# Makes Qt 6 for Windows (MinGW-w64) once, in the cache, for Zirvel.exe:
# Debian's own Qt source (qt6-base 6.4.2, the version of the host Qt whose
# tools the cross-build uses), shared, with its bundled third-party
# libraries and only the modules Zirvel uses.
#   build-qt-windows.sh            prints the Qt prefix (bin/, lib/cmake/, plugins/)
# A ready archive of exactly this build is unpacked instead of building when
# its checksum matches (ZIRVEL_QT_ARCHIVE, default ../shared/cache/); without
# it the build from source takes about 30 minutes on two cores.
set -euo pipefail
cd "$(dirname "$0")/.."

version=6.4.2
cache="${XDG_CACHE_HOME:-$HOME/.cache}/zirvel"
prefix="$cache/qt6-mingw-$version"
archive="${ZIRVEL_QT_ARCHIVE:-$(cd .. && pwd)/shared/cache/qt6-base-$version-mingw-w64.tar.xz}"

if [[ -f "$prefix/lib/cmake/Qt6Widgets/Qt6WidgetsConfig.cmake" && -f "$prefix/plugins/platforms/qwindows.dll" ]]; then
  echo "$prefix"
  exit 0
fi
mkdir -p "$cache"

# The unpacked prefix is moved into place only when whole, so an interrupted
# run leaves no half Qt behind.
install_prefix() {
  rm -rf "$prefix"
  mv "$1" "$prefix"
  echo "$prefix"
}

if [[ -f "$archive" && -f "$archive.sha256" ]]; then
  expected=$(cut -d' ' -f1 "$archive.sha256")
  actual=$(sha256sum "$archive" | cut -d' ' -f1)
  if [[ "$expected" == "$actual" ]]; then
    work=$(mktemp -d "$cache/qt-unpack.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    tar -xJf "$archive" -C "$work"
    install_prefix "$work/qt6-base-$version-mingw-w64"
    exit 0
  fi
  echo "build-qt-windows: $archive does not match its checksum; building from source" >&2
fi

# From source. apt-get source needs deb-src entries for the suites the
# machine already uses (derived from its deb entries when missing) and
# their package lists, and an exact version: it takes no wildcard.
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
source_version() {
  apt-cache showsrc qt6-base 2>/dev/null | sed -n "s/^Version: \($version[^ ]*\)\$/\1/p" | head -n 1
}
if [[ -z $(source_version) ]]; then
  if ! grep -rqs '^Types:.*deb-src\|^deb-src ' /etc/apt/sources.list /etc/apt/sources.list.d/; then
    sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources |
      "${as_root[@]}" tee /etc/apt/sources.list.d/zirvel-deb-src.sources >/dev/null
  fi
  "${as_root[@]}" apt-get update -qq
fi
exact_version=$(source_version)
if [[ -z $exact_version ]]; then
  echo "build-qt-windows: no source package of qt6-base $version in the machine's package sources" >&2
  exit 1
fi
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
  dpkg-dev qt6-base-dev qt6-base-dev-tools g++-mingw-w64-x86-64-posix cmake ninja-build </dev/null

work=$(mktemp -d "$cache/qt-build.XXXXXX")
trap 'rm -rf "$work"' EXIT
# The cross toolchain as the archive was built with (the project's own one
# also runs tests under Wine, which Qt's build must not do).
cat >"$work/mingw.cmake" <<'TOOLCHAIN'
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
TOOLCHAIN
(cd "$work" && apt-get source -qq "qt6-base=$exact_version" >/dev/null)
source_dir=$(find "$work" -maxdepth 1 -type d -name 'qt6-base-*' | head -n 1)
cmake -G Ninja -S "$source_dir" -B "$work/build" \
  -DCMAKE_TOOLCHAIN_FILE="$work/mingw.cmake" \
  -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
  -DCMAKE_INSTALL_PREFIX="$work/qt6-base-$version-mingw-w64" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
  -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_BENCHMARKS=OFF \
  -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_opengl=OFF -DINPUT_opengl=no \
  -DFEATURE_dbus=OFF -DFEATURE_printsupport=OFF -DFEATURE_xml=OFF \
  -DFEATURE_concurrent=ON -DFEATURE_testlib=ON -DFEATURE_icu=OFF -DFEATURE_vulkan=OFF \
  -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_png=OFF \
  -DFEATURE_system_jpeg=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_freetype=OFF \
  -DFEATURE_tabletevent=OFF >/dev/null
cmake --build "$work/build"
cmake --install "$work/build" >/dev/null
install_prefix "$work/qt6-base-$version-mingw-w64"
