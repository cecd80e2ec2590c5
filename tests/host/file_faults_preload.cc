// Loaded in front of the C library, lets one of the program's operations on files fail, the one at
// the index FAIL_AT. Those of Scheme ports do not count.

#define __wrap_fopen fopen
#include "tests/common/file_faults.cc"

#include <cstdlib>

namespace {

[[gnu::constructor]] void Begin() {
  const char* index = std::getenv("FAIL_AT");
  FailFileOperation(index == nullptr ? -1 : std::atoi(index));
}

}  // namespace
