#!/usr/bin/env bash
# Makes (once) a Debian root made by debootstrap, and runs commands inside it with the checkout and the
# shared descriptions mounted. Two kinds of root:
#   i386          32-bit x86 with everything the project needs to build and run its tests
#   package-test  64-bit with a compiler only, to install the project's packages into (copied afresh
#                 for each use by scripts/test-packages.sh)
# Usage: scripts/debian-root.sh KIND setup | KIND run COMMAND... | KIND remove
# (COMMAND runs in the checkout)
# Roots live outside the checkout, which is mounted inside them: /var/tmp/parametercollection/KIND
# (DEBIAN_ROOTS overrides the folder). The host needs root rights for debootstrap, chroot and mount.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
kind="${1:-}"
mirror="${DEBIAN_MIRROR:-http://deb.debian.org/debian}"
suite="${DEBIAN_SUITE:-bookworm}"
case "$kind" in
i386)
    arch=i386
    personality=linux32
    packages=(cmake g++ make pkg-config qtbase5-dev libaravis-dev libusb-1.0-0-dev libxml2-dev googletest
              libgtest-dev libgmock-dev libreadline-dev aravis-tools-cli libxml2-utils xvfb xauth
              fonts-dejavu-core aravis-tools tmux)
    ;;
package-test)
    arch=amd64
    personality=linux64
    packages=(cmake g++ make pkg-config)
    ;;
*)
    echo "usage: $0 i386|package-test setup | $0 i386|package-test run COMMAND..." >&2
    exit 2
    ;;
esac
root="${ROOT_OVERRIDE:-${DEBIAN_ROOTS:-/var/tmp/parametercollection}/$kind}"

# Removes a root, but only once nothing is mounted inside it any more: the checkout is bind-mounted there,
# and removing through a mount would remove the checkout.
remove_root() {
    local m
    for m in $(awk -v r="$root/" 'index($2, r) == 1 { print $2 }' /proc/mounts | sort -r); do
        umount -l "$m" || true
    done
    if awk -v r="$root/" 'index($2, r) == 1 { found = 1 } END { exit !found }' /proc/mounts; then
        echo "$root still has mounts inside; not removing it" >&2
        return 1
    fi
    rm -rf "$root"
}

need_host_tools() {
    command -v debootstrap >/dev/null && return
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends debootstrap >/dev/null
}

setup() {
    if [ -f "$root/.complete" ]; then
        return
    fi
    need_host_tools
    remove_root
    mkdir -p "$root"
    # The base system first, then the packages with apt inside it, which resolves them as Debian does.
    debootstrap --arch="$arch" --variant=minbase "$suite" "$root" "$mirror" >"$root.log" 2>&1 ||
        { tail -20 "$root.log"; exit 1; }
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    inside bash -c "apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
        --no-install-recommends ${packages[*]} >/dev/null"
    touch "$root/.complete"
}

mounted() { mountpoint -q "$root/$1"; }

# Mounts what a build needs (proc, dev with its terminals, the checkout and the shared folder beside it) for one command.
inside() {
    local shared
    shared=$(cd "$here/.." && pwd)/shared
    mkdir -p "$root/proc" "$root/dev" "$root/work/main" "$root/work/shared" "$root/tmp"
    trap unmount_all EXIT
    mounted proc || mount -t proc proc "$root/proc"
    mounted dev || mount --bind /dev "$root/dev"
    mounted dev/pts || mount --bind /dev/pts "$root/dev/pts"
    mounted dev/shm || { mkdir -p "$root/dev/shm" && mount -t tmpfs shm "$root/dev/shm"; }
    mounted work/main || mount --bind "$here" "$root/work/main"
    if [ -d "$shared" ] && ! mounted work/shared; then
        mount --bind -o ro "$shared" "$root/work/shared"
    fi
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        "$personality" "$@"
}

unmount_all() {
    for m in work/shared work/main dev/shm dev/pts dev proc; do
        if mounted "$m"; then umount -l "$root/$m" || true; fi
    done
}

case "${2:-}" in
setup) setup ;;
remove) remove_root ;;
run)
    shift 2
    setup
    inside bash -c "cd /work/main && $*"
    ;;
*)
    echo "usage: $0 KIND setup | KIND run COMMAND... | KIND remove" >&2
    exit 2
    ;;
esac
