#include "foundation/YMemory.h"

#include <cstdio>

void YOutOfMemory() {
  std::fputs("yqrtClui: out of memory\n", stderr);
  std::abort();
}
