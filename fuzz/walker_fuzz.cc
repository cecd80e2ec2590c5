// The walker against its judge.

#include "fuzz/Choices.h"
#include "fuzz/walker_judge.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const std::string difference = JudgeWalk(bytes, count);
  Require(difference.empty(), difference.c_str());
  return 0;
}
