// The walker against its reference.

#include "fuzz/walker_reference.h"
#include "tests/support/Choices.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const std::string difference = CompareWalkers(bytes, count);
  Require(difference.empty(), difference.c_str());
  return 0;
}
