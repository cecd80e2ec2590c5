#!/usr/bin/env bash
# Opens command files in Neovim, which asks the language server about them.
set -euo pipefail
clui=$1 nvim=$2 examples=$3
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
mkdir "$room/drafting"
printf '%s\n' 'lien: 0,0 to: 10,0' 'circle: 5,5 radius: 2' 'text: "食堂", x at: 1,y' >"$room/drafting/plan.cmd"

# Prints what the server says about a file, and what it offers for "rad" in a circle.
told() {
  HOME=$room XDG_STATE_HOME=$room CLUI=$clui LANGUAGE=$examples/drafting/drafting.scm COMMANDS=$1 \
    EXAMPLES=$examples ASAN_OPTIONS=detect_leaks=0 \
    timeout 100 "$nvim" --headless -u NONE -S "$(dirname "$0")/neovim.lua" 2>&1 | tr -d '\r'
}

got=$(told "$room/drafting/plan.cmd")
expected='type clui
1:1 no such word "lien:"*
3:25 argument 2 of "at:": expected a number, found "y"
3:1 the text ends inside a command
offer radius:*
stopped true'
# shellcheck disable=SC2053
[[ $got == $expected ]] || { printf 'got:\n%s\n' "$got"; exit 1; }
