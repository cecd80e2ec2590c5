// Previews: a random language and random texts, each previewed and then interpreted.

#include "tests/support/PreviewCheck.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  PreviewCheck check(choices);
  while (choices.more()) {
    const std::string difference = check.step();
    Require(difference.empty(), difference.c_str());
  }
  return 0;
}
