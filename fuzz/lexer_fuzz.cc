// The lexer against its reference: any bytes, with any dictionary.

#include "fuzz/lexer_reference.h"
#include "tests/support/Choices.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const std::string difference = CompareLexers(bytes, count);
  Require(difference.empty(), difference.c_str());
  return 0;
}
