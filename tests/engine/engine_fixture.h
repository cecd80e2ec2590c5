// The engine for tests: started once in the program, with the test library open and a listener that
// records the reported errors.

#ifndef TESTS_ENGINE_ENGINE_FIXTURE_H_
#define TESTS_ENGINE_ENGINE_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

// Runs a text. Returns "+" and the printed value, or "-" and the message.
std::string Eval(const std::string& text);

class EngineTest : public testing::Test {
 protected:
  static constexpr std::size_t MemoryLimit = std::size_t{96} << 20;

  void SetUp() override;

  static std::vector<ScmVMError> errors;
};

#endif  // TESTS_ENGINE_ENGINE_FIXTURE_H_
