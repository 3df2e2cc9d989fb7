#!/usr/bin/env bash
# Runs the README's test command on a machine where nothing was installed by
# hand: a new Debian 12 root made with debootstrap, the repository cloned
# into it with ../shared beside it (as CI has it), scripts/test.sh run there
# as root with CI=true and no standard input. Run it before a change of
# dependencies lands; it takes about an hour on 2 cores and needs root.
#   fresh-machine-check.sh [FOLDER]   the new root goes to FOLDER
#                                     (default /var/tmp/zirvel-fresh-machine)
# Prints the result and the time; the whole log is FOLDER.log.
set -euo pipefail
repository=$(cd "$(dirname "$0")/.." && pwd)
shared="$repository/../shared"
root=${1:-/var/tmp/zirvel-fresh-machine}
log="$root.log"

[[ $(id -u) -eq 0 ]] || { echo "fresh-machine-check: debootstrap and chroot need root" >&2; exit 2; }
[[ -d "$shared" ]] || { echo "fresh-machine-check: no shared folder beside the repository ($shared)" >&2; exit 2; }
"$repository/scripts/install-dependencies.sh" fresh-machine

# The Debian mirror this machine's apt uses; the new root gets the same lists.
mirror=$(cat /etc/apt/sources.list /etc/apt/sources.list.d/*.sources 2>/dev/null |
           grep -oE '^(URIs:|deb) +[a-z]+://[^ ]+' | grep -v security | head -n1 | awk '{print $2}' || true)
[[ -n "$mirror" ]] || { echo "fresh-machine-check: no Debian mirror in this machine's apt sources" >&2; exit 2; }

unmount_all() {
  for point in dev/pts dev/shm dev sys proc; do
    mountpoint -q "$root/$point" && umount -l "$root/$point"
  done
  return 0
}
trap unmount_all EXIT

started=$(date +%s)
unmount_all
rm -rf "$root"
mkdir -p "$root"
echo "=== debootstrap bookworm into $root"
debootstrap --variant=minbase bookworm "$root" "$mirror" >"$log" 2>&1 || { tail -n 20 "$log"; exit 1; }
cp /etc/apt/sources.list "$root/etc/apt/" 2>/dev/null || true
cp /etc/apt/sources.list.d/*.sources "$root/etc/apt/sources.list.d/" 2>/dev/null || true
cp /etc/resolv.conf "$root/etc/resolv.conf"
# The machine's trust in its own network (local certificate authorities,
# npm's setting for them) belongs to the network, not to the project: the
# new root gets it as any machine here has it.
mkdir -p "$root/usr/local/share/ca-certificates"
cp /usr/local/share/ca-certificates/*.crt "$root/usr/local/share/ca-certificates/" 2>/dev/null || true
cp /etc/npmrc "$root/etc/npmrc" 2>/dev/null || true

for point in proc sys dev dev/pts dev/shm; do
  mkdir -p "$root/$point"
  mount --bind "/$point" "$root/$point"
done

echo "=== the repository and shared/ into the new root"
mkdir -p "$root/work"
git clone --quiet --no-local "$repository" "$root/work/main"
cp -r "$shared" "$root/work/shared"

echo "=== scripts/test.sh in the new root (log: $log)"
status=0
chroot "$root" /usr/bin/env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
  HOME=/root LANG=C.UTF-8 CI=true ${NODE_EXTRA_CA_CERTS:+NODE_EXTRA_CA_CERTS=$NODE_EXTRA_CA_CERTS} \
  /bin/bash -c 'cd /work/main && scripts/test.sh' </dev/null >>"$log" 2>&1 ||
  status=$?
took=$(($(date +%s) - started))
grep -E '^(=== |[0-9]+% tests passed|Total Test time)' "$log" || true
if [[ $status -eq 0 ]]; then
  echo "fresh-machine-check: passed in $took s"
else
  tail -n 40 "$log"
  echo "fresh-machine-check: FAILED (exit $status) after $took s; the whole log is $log"
fi
exit "$status"
