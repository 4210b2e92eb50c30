#!/usr/bin/env bash
# Builds the Debian packages and plays the demo from them in a system that has nothing else: a fresh Debian from the
# network, in a folder of its own. Needs root, debootstrap and the network; takes some minutes. To be run by hand.
#
#   packaging/try_debian_package.sh [FOLDER-FOR-THE-SYSTEM]
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
system=${1:-$(mktemp -d)/system}
. "$top/tools/setup.sh"
need_packages "${packages_build[@]}" debootstrap dpkg-dev
build=$top/build-package

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DPROSCENIUM_TESTS=OFF >/dev/null
cmake --build "$build"
rm -f "$build"/*.deb
(cd "$build" && cpack)

[ -x "$system/usr/bin/apt-get" ] || debootstrap --variant=minbase bookworm "$system"
inside() { chroot "$system" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
cleanup() { umount "$system/proc" 2>/dev/null || true; }
trap cleanup EXIT
mountpoint -q "$system/proc" || mount -t proc proc "$system/proc" 2>/dev/null || say "/proc could not be mounted; going on without it"
cp "$build"/proscenium_*.deb "$system/tmp/proscenium.deb"
rm -rf "$system/tmp/demo"
cp -R "$build/demo-tree" "$system/tmp/demo"

inside apt-get update -q
inside apt-get install -q -y --no-install-recommends /tmp/proscenium.deb
inside proscenium --version
inside prosc --version
inside proscenium /tmp/demo --headless --frames 30 --shot last:/tmp/demo.png
[ -s "$system/tmp/demo.png" ] || { say "the demo showed nothing"; exit 1; }
"$build/proscenium" "$build/demo-tree" --headless --frames 30 --shot "last:$build/demo.png"
cmp "$system/tmp/demo.png" "$build/demo.png" || { say "the installed program shows another picture"; exit 1; }
# There is no desktop inside: a clear word and status 1.
status=0
inside env -u DISPLAY -u WAYLAND_DISPLAY proscenium /tmp/demo -window 2>"$build/no-desktop" || status=$?
cat "$build/no-desktop" >&2
[ $status -eq 1 ] && grep -q -- --headless "$build/no-desktop" || { say "without a desktop it ended with $status"; exit 1; }
inside dpkg -L proscenium
inside apt-get remove -q -y proscenium
if inside sh -c 'command -v proscenium'; then say "it is still there after it was removed"; exit 1; fi
say "The package installs, plays and goes away again."
