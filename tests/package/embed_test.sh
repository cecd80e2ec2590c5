#!/usr/bin/env bash
# Installs the build into an empty folder, compiles the embedding examples against what is there with
# a host's default flags, by find_package and by pkg-config, and runs them. Every function that an
# installed header declares can be linked. The prompt is built where the line editor is, and typed
# into where there is tmux; the host of scripts is built where the engine is. At the end nothing is
# left of what was installed.
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
  grep -vE '^(using|inline|constexpr|template|struct)|[{]$' | sed -E 's/[(].*//; s/.*[ *&]//' |
  sort -u | comm -23 - <(sort -u <<<"$exported"))
[ -z "$missing" ] || { printf 'declared in a header, but not exported: %s\n' "$missing"; exit 1; }

# Makes NAME/found/NAME and NAME/by_pkg_config of the host in a folder.
made() { # folder package
  local flags name
  name=$(basename "$1")
  cmake -S "$1" -B "$room/$name/found" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$room/there" >/dev/null
  ninja -C "$room/$name/found" >/dev/null
  read -ra flags < <(pkg-config --cflags --libs "$2")
  "$compiler" -std=c++20 -o "$room/$name/by_pkg_config" "$1/main.cc" "${flags[@]}"
  for host in "$room/$name/found/$name" "$room/$name/by_pkg_config"; do
    ! LD_LIBRARY_PATH=$libraries ldd "$host" | grep -E "not found${3+|$3}" || exit 1
  done
}

# Configures a host that asks for a component; prints what CMake says.
asked() { # component
  mkdir -p "$room/asks"
  printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(asks CXX)' \
    "find_package(yqrtClui REQUIRED COMPONENTS $1)" >"$room/asks/CMakeLists.txt"
  cmake -S "$room/asks" -B "$room/asks/build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$room/there" 2>&1
}
! says=$(asked nonsense)
[[ $says == *'yqrtClui has no component "nonsense"'* ]] || { echo "$says"; exit 1; }

for file in "$PKG_CONFIG_PATH"/*.pc; do pkg-config --exists --print-errors "$(basename "$file" .pc)"; done

if [ -e "$PKG_CONFIG_PATH/yqrtyse.pc" ]; then
  made "$(dirname "$0")/script" yqrtyse
  for host in "$room/script/found/script" "$room/script/by_pkg_config"; do
    got=$(LD_LIBRARY_PATH=$libraries "$host")
    [ "$got" = '#t here' ] || { printf 'got: %s\n' "$got"; exit 1; }
  done
else
  ! says=$(asked engine)
  [[ $says == *'component "engine" of yqrtClui needs'* ]] || { echo "$says"; exit 1; }
fi

made "$examples/embed" yqrtClui guile
expected=$'result 12\nresult 14\nrefused: twelve\nrefused: less:\ntotal 26'
for host in "$room/embed/found/embed" "$room/embed/by_pkg_config"; do
  got=$(printf 'add:5,7 from:10\nless:-4\ntwelve LESS:3 tot\n' | LD_LIBRARY_PATH=$libraries "$host")
  [ "$got" = "$expected" ] || { printf 'got:\n%s\n' "$got"; exit 1; }
done

# The first language of the README, in C++.
sed -n '/`hello.cc`:$/,/^    }$/{s/^    //p; /^$/p}' "$examples/../README.md" >"$room/hello.cc"
read -ra flags < <(pkg-config --cflags --libs yqrtClui)
"$compiler" -std=c++17 -Wall -Wextra -Wnon-virtual-dtor -Wconversion -Wshadow -Werror \
  -o "$room/hello" "$room/hello.cc" "${flags[@]}"
got=$(echo 'hello add:5,7 q hello' | LD_LIBRARY_PATH=$libraries "$room/hello")
[ "$got" = $'Hello.\n12\nBye.' ] || { printf 'hello.cc of the README:\n%s\n' "$got"; exit 1; }
[[ $(<"$examples/../docs/embedding.md") == *"$(sed 's/^./    &/' "$room/hello.cc")"* ]] ||
  { echo 'docs/embedding.md has another hello.cc than README.md'; exit 1; }

calculated() {
  cat >"$room/areas" <<'END'
take: 3.5 times: 4 keep: area
take: area over: 2 minus: 1 show list
take: 1 over: 0 show
  take: x show forget: x
take: 2
  help plus: 3 show
forget: area list quit take: 1 show
END
  expected=$'6\narea = 14\n  keep:     stores the result\n  minus:    subtracts\n  over:     divides
  plus:     adds\n  show      prints the result\n  times:    multiplies
  help      lists what can be typed\n5
3:17: the result is no number\n4:11: there is no variable x\n4:16: there is no variable x'
  for host in "$room/calculator/found/calculator" "$room/calculator/by_pkg_config"; do
    got=$(LD_LIBRARY_PATH=$libraries "$host" "$room/areas" 2>"$room/refused" || cat "$room/refused")
    [ "$got" = "$expected" ] || { printf 'got:\n%s\n' "$got"; exit 1; }
  done
}

# Waits until a line of the screen matches; blanks at its end do not count.
shows() { # pattern session
  for _ in {1..100}; do
    tmux capture-pane -p ${2:+-t "$2"} | sed 's/ *$//' | grep -qx -- "$1" && return
    sleep 0.1
  done
  printf 'not on the screen: %s\n' "$1"
  tmux capture-pane -p ${2:+-t "$2"}
  exit 1
}

typed_into() {
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
}

calculator_typed_into() {
  tmux new-session -d -s calculator -x 80 -y 20 "XDG_STATE_HOME=$room LD_LIBRARY_PATH=$libraries \
    LC_ALL=C.UTF-8 $room/calculator/by_pkg_config && echo left; sleep 60"
  typed() { tmux send-keys -t calculator "$@"; }
  shown() { shows "$1" calculator; }
  shown '>'
  typed 'ta' Tab '3.5 ti' Tab '4 keep: area' Enter
  typed 'take: ' Tab ' over: 0 show' Enter
  shown 'the result is no number'
  typed 'take: area pl' Enter
  shown '.*"pl".*expected.*plus:.*'
  typed C-c 'qu' Tab Enter
  shown 'left'
  grep -qx 'take: area over: 0 show' "$room/clui/calculator.history"
}

if [ -e "$PKG_CONFIG_PATH/yqrtcluiterm.pc" ]; then
  [[ $(<"$examples/../docs/embedding.md") == *"$(sed 's/^./    &/' "$examples/prompt/main.cc")"* ]] ||
    { echo 'docs/embedding.md has another program than examples/prompt'; exit 1; }
  made "$examples/prompt" yqrtcluiterm guile
  made "$examples/calculator" yqrtcluiterm guile
  calculated
  if hash tmux 2>/dev/null; then
    typed_into
    calculator_typed_into
  fi
fi

cmake -D MANIFEST="$build/install_manifest.txt" -P "$(dirname "$0")/../../package/Uninstall.cmake"
left=$(find "$room/there" ! -type d; find "$room/there" -iname '*yqrt*')
[ -z "$left" ] || { printf 'left after the removal: %s\n' "$left"; exit 1; }
