#!/usr/bin/env bash
# Builds an example with the library as a static part of its build, and without GoogleTest; only what
# the example needs is compiled. Inside that build there are no tests and no install rules of the
# library. On its own the library can be configured without GoogleTest, too.
set -euo pipefail
source=$1 compiler=$2
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
without=(-G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON)

says=$(cmake -S "$source" -B "$room/alone" "${without[@]}" -DCLUI_ENGINE=OFF 2>&1)
[[ $says == *'GoogleTest was not found'*'the tests are not built'* ]] || { echo "$says"; exit 1; }

cmake -S "$source/tests/package/subproject" -B "$room/build" "${without[@]}" \
  --no-warn-unused-cli -DSOURCE="$source" -DHOST="$source/examples/embed" >/dev/null
ninja -C "$room/build" subproject >/dev/null
got=$(printf 'add:5,7 from:10\nless:-4\n' | "$room/build/subproject")
[ "$got" = $'result 12\nresult 14' ] || { printf 'got:\n%s\n' "$got"; exit 1; }
! grep -rqE '^add_test' "$room/build" --include=CTestTestfile.cmake ||
  { echo 'the library has tests inside another project'; exit 1; }
! grep -rq 'file(INSTALL' "$room/build" --include=cmake_install.cmake ||
  { echo 'the library is installed with another project'; exit 1; }
