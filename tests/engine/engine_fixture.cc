#include "tests/engine/engine_fixture.h"

#include <cstdlib>

// For the collector: it scans the real stack, keeps what is reachable at the end, and copies the
// whole stack for a continuation.
extern "C" const char* __asan_default_options();
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
  return "detect_leaks=0:detect_stack_use_after_return=0:replace_intrin=0";
}

std::vector<ScmVMError> EngineTest::errors;

void EngineTest::SetUp() {
  errors.clear();
  static bool started = false;
  if (started) return;
  started = true;
  std::string error;
  setenv("HOME", "/nowhere", 1);
  ASSERT_EQ(ScmVM::start(MemoryLimit, error), 1U) << error;
  ASSERT_EQ(ScmVM::openLibrary(SOUND_LIBRARY, "lib-TEST", error), 1U) << error;
  ScmVM::setErrorListener(
      [](void*, const ScmVMError& reported) { EngineTest::errors.push_back(reported); }, nullptr);
}

std::string Eval(const std::string& text) {
  YStatus status{0};
  char buffer[256];
  const long length = ScmVMExternal::ExecuteString(text.c_str(), buffer, sizeof buffer, status);
  return (YStatusIsGood(status) ? "+" : "-") + std::string(buffer, length);
}
