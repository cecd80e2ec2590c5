#!/usr/bin/env bash
# What leaves the shared library: the classes and functions of the list, and nothing else. Members,
# tables and type information count for their class, template instances for their template.
set -euo pipefail
library=$1 list=$2
nm --dynamic --defined-only --demangle --format=posix "$library" |
  sed -E 's/ [A-Za-z]( [0-9a-f]+)*$//
          s/^(vtable|typeinfo|typeinfo name|guard variable|non-virtual thunk) (for|to) //
          s/\(.*//
          :strip s/<[^<>]*>//; t strip
          s/::.*//' |
  sort -u | diff "$list" -
