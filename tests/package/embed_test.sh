#!/usr/bin/env bash
# Installs the build into an empty folder, compiles the embedding examples against what is there with
# a host's default flags, by find_package and by pkg-config, and runs them. Every function that an
# installed header declares can be linked. The prompt is built where the line editor is, and typed
# into where there is tmux.
set -euo pipefail
build=$1 examples=$2 compiler=$3
room=$(mktemp -d)
tmux() { command tmux -S "$room/tmux" -f /dev/null "$@"; }
trap 'tmux kill-server 2>/dev/null || true; rm -rf "$room"' EXIT

cmake --install "$build" --prefix "$room/there" >/dev/null

export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$room/there" -name yqrtClui.pc)")
libraries=$(dirname "$PKG_CONFIG_PATH")
exported=$(nm --dynamic --defined-only --demangle --format=posix "$libraries"/lib*.so | sed 's/[ (].*//')
missing=$(grep -rhE '^[A-Za-z_][^(]*[(]' "$room/there/include" |
  grep -vE '^(using|inline|constexpr|template)|[{]$' | sed -E 's/[(].*//; s/.*[ *&]//' |
  sort -u | comm -23 - <(sort -u <<<"$exported"))
[ -z "$missing" ] || { printf 'declared in a header, but not exported: %s\n' "$missing"; exit 1; }

# Makes NAME/found/NAME and NAME/by_pkg_config of an example.
made() { # name package
  local flags
  cmake -S "$examples/$1" -B "$room/$1/found" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$room/there" >/dev/null
  ninja -C "$room/$1/found" >/dev/null
  read -ra flags < <(pkg-config --cflags --libs "$2")
  "$compiler" -std=c++20 -o "$room/$1/by_pkg_config" "$examples/$1/main.cc" "${flags[@]}"
  for host in "$room/$1/found/$1" "$room/$1/by_pkg_config"; do
    ! LD_LIBRARY_PATH=$libraries ldd "$host" | grep -E 'guile|not found' || exit 1
  done
}

made embed yqrtClui
expected=$'result 12\nresult 14\nrefused: twelve\nrefused: less:\ntotal 26'
for host in "$room/embed/found/embed" "$room/embed/by_pkg_config"; do
  got=$(printf 'add:5,7 from:10\nless:-4\ntwelve LESS:3 tot\n' | LD_LIBRARY_PATH=$libraries "$host")
  [ "$got" = "$expected" ] || { printf 'got:\n%s\n' "$got"; exit 1; }
done

[ -e "$PKG_CONFIG_PATH/yqrtcluiterm.pc" ] || exit 0
[[ $(<"$examples/../docs/embedding.md") == *"$(sed 's/^./    &/' "$examples/prompt/main.cc")"* ]] ||
  { echo 'docs/embedding.md has another program than examples/prompt'; exit 1; }
made prompt yqrtcluiterm
hash tmux 2>/dev/null || exit 0

# Waits until a line of the screen matches; blanks at its end do not count.
shows() {
  for _ in {1..100}; do
    tmux capture-pane -p | sed 's/ *$//' | grep -qx -- "$1" && return
    sleep 0.1
  done
  printf 'not on the screen: %s\n' "$1"
  tmux capture-pane -p
  exit 1
}

tmux new-session -d -x 80 -y 20 "XDG_STATE_HOME=$room LD_LIBRARY_PATH=$libraries LC_ALL=C.UTF-8 \
  $room/prompt/by_pkg_config && echo left; sleep 60"
shows '>'
tmux send-keys Tab Tab
shows 'quit    leaves'
tmux send-keys 'li' Tab ' k' Tab ' '
shows '> light: kitchen'
tmux send-keys 'level: '
shows '> light: kitchen level: LEVEL: .* 0 to 100, in percent'
tmux send-keys '400' Enter 'shov' Enter
shows '.*"shov".*expected.*show'
tmux send-keys C-e C-u 'show nonsense' Enter
shows 'kitchen: 100'
shows 'refused: nonsense'
tmux send-keys 'quit' Enter
shows 'left'
grep -qx 'show nonsense' "$room/clui/lamps.history"
