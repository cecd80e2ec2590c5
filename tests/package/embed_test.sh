#!/usr/bin/env bash
# Installs the build into an empty folder, compiles the embedding example against what is there with
# a host's default flags, by find_package and by pkg-config, and runs both. Every function that an
# installed header declares can be linked.
set -euo pipefail
build=$1 example=$2 compiler=$3
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT

cmake --install "$build" --prefix "$room/there" >/dev/null

cmake -S "$example" -B "$room/found" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_PREFIX_PATH="$room/there" >/dev/null
ninja -C "$room/found" >/dev/null

export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$room/there" -name yqrtClui.pc)")
libraries=$(dirname "$PKG_CONFIG_PATH")
exported=$(nm --dynamic --defined-only --demangle --format=posix "$libraries"/lib*.so | sed 's/[ (].*//')
missing=$(grep -rhE '^[A-Za-z_][^(]*[(]' "$room/there/include" |
  grep -vE '^(using|inline|constexpr|template)|[{]$' | sed -E 's/[(].*//; s/.*[ *&]//' |
  sort -u | comm -23 - <(sort -u <<<"$exported"))
[ -z "$missing" ] || { printf 'declared in a header, but not exported: %s\n' "$missing"; exit 1; }

read -ra flags < <(pkg-config --cflags --libs yqrtClui)
"$compiler" -std=c++20 -o "$room/by_pkg_config" "$example/main.cc" "${flags[@]}"

expected=$'result 12\nresult 14\nrefused: twelve\nrefused: less:\ntotal 26'
for host in "$room/found/embed" "$room/by_pkg_config"; do
  got=$(printf 'add:5,7 from:10\nless:-4\ntwelve LESS:3 tot\n' |
    LD_LIBRARY_PATH=$libraries "$host")
  [ "$got" = "$expected" ] || { printf 'got:\n%s\n' "$got"; exit 1; }
  ! ldd "$host" | grep -q guile || { echo 'a host without scripts needs Guile'; exit 1; }
done
