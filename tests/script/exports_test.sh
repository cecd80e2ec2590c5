#!/usr/bin/env bash
# Compares the exported classes and functions of the shared library with the list. Members, tables
# and type information count as their class, template instances as their template.
set -euo pipefail
library=$1 list=$2
nm --dynamic --defined-only --demangle --format=posix "$library" |
  sed -E 's/ [A-Za-z]( [0-9a-f]+)*$//
          s/^(vtable|typeinfo|typeinfo name|guard variable|non-virtual thunk) (for|to) //
          s/(\[abi:.*)?\(.*//
          :strip s/<[^<>]*>//; t strip
          s/::.*//' |
  sort -u | diff "$list" -
