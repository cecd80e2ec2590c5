#!/usr/bin/env bash
# Compiles each public header alone, as C++17, with the warnings of careful hosts as errors and not
# as a system header, by each of the given compilers that is there.
set -euo pipefail
include=$1
shift
compiled() { # compiler header
  echo "#include <${2#./}>" | "$1" -x c++ - -std=c++17 -fsyntax-only -Werror -Wall -Wextra \
    -Wnon-virtual-dtor -Wconversion -Wshadow -I "$PWD" -I "$PWD/.." || { echo "$1: $2"; return 1; }
}
export -f compiled
cd "$include/yqrtClui"
for compiler in "$@"; do
  hash "$compiler" 2>/dev/null || continue
  # The umbrella header includes most of the others, so one failure is enough.
  find . -name '*.h' -print0 | sort -z | xargs -0 -P "$(nproc)" -I{} bash -c "compiled $compiler {}"
done
