#!/usr/bin/env bash
# Makes the Debian packages, installs them into an empty root as dpkg does anywhere, with the packages
# of this machine as what they may depend on, builds and runs the embedding example and the program
# from there, and removes them: no file is left. lintian finds no error in them, where it is there.
set -euo pipefail
build=$1 examples=$2 compiler=$3
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
root=$room/root

cpack --config "$build/CPackConfig.cmake" -B "$room/packages" >"$room/log" 2>&1 ||
  { cat "$room/log"; exit 1; }
packages=("$room"/packages/*.deb)
! hash lintian 2>/dev/null || lintian --allow-root --fail-on error "${packages[@]}" 2>&1 ||
  { echo 'lintian found an error'; exit 1; }

mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
cp /var/lib/dpkg/status "$root/var/lib/dpkg/status"
in_root() { # dpkg's arguments
  dpkg --root="$root" --force-not-root --force-bad-path --log=/dev/null "$@" >"$room/log" 2>&1 ||
    { grep -v 'files list file' "$room/log"; exit 1; }
}
in_root --install "${packages[@]}"
export LD_LIBRARY_PATH=$root/usr/lib

cmake -S "$examples/embed" -B "$room/embed" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_PREFIX_PATH="$root/usr" >/dev/null
ninja -C "$room/embed" >/dev/null
got=$(printf 'add:5,7 from:10\nless:-4\n' | "$room/embed/embed")
[ "$got" = $'result 12\nresult 14' ] || { printf 'got:\n%s\n' "$got"; exit 1; }

if [ -e "$root/usr/bin/clui" ]; then
  manuals=$root/usr/share/doc/yqrtclui-doc
  (cd "$room" && "$root/usr/bin/clui" --quiet "$manuals/examples/drafting/drafting.scm" \
    "$manuals/examples/drafting/house.cmd" >/dev/null)
  [ -s "$room/house.svg" ] || { echo 'the program drew no house'; exit 1; }
  [ -s "$root/usr/share/man/man1/clui.1.gz" ] || { echo 'no manual page'; exit 1; }
fi

names=()
for package in "${packages[@]}"; do names+=("$(dpkg-deb --field "$package" Package)"); done
in_root --purge "${names[@]}"
left=$(find "$root" -path "$root/var/lib/dpkg" -prune -o ! -type d -print -o -iname '*yqrt*' -print)
[ -z "$left" ] || { printf 'left after the removal: %s\n' "$left"; exit 1; }
