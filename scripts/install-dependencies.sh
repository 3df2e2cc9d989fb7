#!/usr/bin/env bash
# Installs the Debian packages that a task needs and that are missing.
#   install-dependencies.sh run    building and running the program
#   install-dependencies.sh test   building both platforms and running tests
#   install-dependencies.sh demo   the demo on a private X server
#   install-dependencies.sh demo-windows   the Windows program's demo under Wine
#   install-dependencies.sh screenshots    the documents' pictures made anew by the tests
#   install-dependencies.sh fresh-machine  the fresh-machine check (a new Debian root)
# Uses sudo when not root; never asks questions.
set -euo pipefail

# Qt 6 draws the pictures and the overlay windows on Linux (its image
# plugins decode ICO and JPEG icons); DejaVu Sans stands in for "Segoe UI";
# Qt SVG draws the icons from resources/ at build time; Xlib, XInput2,
# XTest and RandR drive the X server; the PulseAudio client records the
# microphone; npm fetches the speech recogniser library; libatspi (AT-SPI2)
# finds the clickable elements for the numbered hints.
# The linux preset configures the tests and benchmarks too, so what they
# link is needed to configure at all: GoogleTest, XFixes, X-Resource.
build_packages=(cmake ninja-build g++ pkg-config qt6-base-dev qt6-svg-dev fonts-dejavu-core
                libx11-dev libxi-dev libxtst-dev libxrandr-dev libpulse-dev libatspi2.0-dev
                libgtest-dev libgmock-dev libxfixes-dev libxres-dev)
# A private sound server without a sound card and Polish speech for the
# voice tests; for the hint tests a private session bus (dbus-daemon,
# dbus-send) that starts the accessibility bus (at-spi2-core), and a GTK
# dialog nobody here wrote (zenity); a window manager whose active window
# the element scan follows (openbox); a notification area for the tray
# menu's tests (trayer); a Wayland compositor without a screen (weston) and
# Qt's Wayland backend (qt6-wayland), with which Qt would put the windows
# of a program in a Wayland session on Wayland; what builds
# and checks the packages (dpkg-shlibdeps, lintian, man, desktop-file-validate,
# appstreamcli, makensis, unzip); what signs the Windows packages and checks
# their signatures (osslsigncode), with a certificate of the test's own that
# openssl makes; clang's libFuzzer and sanitizers for the fuzz targets.
test_packages=(clang-14 libclang-rt-14-dev dpkg-dev lintian man-db desktop-file-utils appstream nsis unzip
               osslsigncode openssl libgtest-dev libgmock-dev googletest
               g++-mingw-w64-x86-64-posix wine wine64 xvfb xauth
               xcompmgr x11-utils pulseaudio pulseaudio-utils espeak-ng
               zenity at-spi2-core dbus-daemon dbus-bin openbox trayer
               weston qt6-wayland)

demo_packages=(xvfb xcompmgr x11-apps x11-xserver-utils xdotool xterm netpbm)
# The Windows demo: the cross compiler, Wine, and a tray host for Wine's icons.
windows_demo_packages=(g++-mingw-w64-x86-64-posix wine wine64 trayer)
# The fresh-machine check: a new Debian root to run the test command in.
fresh_machine_packages=(debootstrap git)

case "${1:-}" in
  run)  wanted=("${build_packages[@]}") ;;
  demo) wanted=("${build_packages[@]}" "${demo_packages[@]}") ;;
  demo-windows) wanted=("${build_packages[@]}" "${demo_packages[@]}" "${windows_demo_packages[@]}") ;;
  test) wanted=("${build_packages[@]}" "${test_packages[@]}") ;;
  screenshots) wanted=("${build_packages[@]}" "${test_packages[@]}" netpbm) ;;
  fresh-machine) wanted=("${fresh_machine_packages[@]}") ;;
  *) echo "usage: $0 run|test|demo|demo-windows|screenshots|fresh-machine" >&2; exit 2 ;;
esac

# npm may come with Node.js from elsewhere; Debian's only when there is none.
[[ $1 == fresh-machine ]] || command -v npm >/dev/null || wanted+=(npm)

missing=()
for package in "${wanted[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$package")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing Debian packages: ${missing[*]}"
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null
