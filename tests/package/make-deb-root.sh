#!/usr/bin/env bash
# Builds the Debian package from a configured build folder and unpacks it
# into a scratch root, as dpkg would install it there; then checks it as a
# Debian archive would: lintian without errors or warnings, a manual page for every
# program that renders without a warning, the desktop entry and the
# AppStream file valid.
#   make-deb-root.sh BUILD_DIR OUT_DIR      (OUT_DIR/root gets the files)
set -euo pipefail
for program in cpack dpkg-deb lintian man desktop-file-validate appstreamcli; do
  command -v "$program" >/dev/null ||
    { echo "$program is not installed; scripts/install-dependencies.sh test installs it" >&2; exit 1; }
done
build_dir=$1
out_dir=$2
rm -rf "$out_dir"
mkdir -p "$out_dir"
(cd "$build_dir" && cpack -G DEB -D CPACK_OUTPUT_FILE_PREFIX="$out_dir" >"$out_dir/cpack.log" 2>&1) ||
  { cat "$out_dir/cpack.log"; exit 1; }
package=$(ls "$out_dir"/zirvel_*_amd64.deb)
dpkg -x "$package" "$out_dir/root"
echo "package: $package"
dpkg-deb -f "$package" Depends

echo "=== lintian"
status=0
lintian --fail-on error,warning --tag-display-limit 0 "$package" >"$out_dir/lintian.log" 2>&1 || status=$?
grep -v 'root privileges' "$out_dir/lintian.log" || true
[[ $status -eq 0 ]] || { echo "lintian reports errors or warnings"; exit 1; }

echo "=== manual pages"
for program in "$out_dir"/root/usr/bin/*; do
  page="$out_dir/root/usr/share/man/man1/$(basename "$program").1.gz"
  [[ -f $page ]] || { echo "no manual page for $(basename "$program")"; exit 1; }
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null)
  [[ -z $warnings ]] || { echo "$page: $warnings"; exit 1; }
done

echo "=== desktop-file-validate"
desktop-file-validate "$out_dir"/root/usr/share/applications/*.desktop
desktop-file-validate "$out_dir"/root/usr/share/zirvel/autostart/*.desktop
echo "=== appstreamcli validate"
appstreamcli validate --no-net "$out_dir"/root/usr/share/metainfo/*.metainfo.xml
