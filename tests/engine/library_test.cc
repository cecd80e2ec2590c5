// Script libraries: opening them, their primitives, and what an error of one says.

#include <dlfcn.h>

#include "tests/engine/engine_fixture.h"

namespace {

using LibraryTest = EngineTest;

TEST_F(LibraryTest, Handles) {
  Eval("(do ((i 0 (+ i 1))) ((= i 1000)) (t-handle 8)) (gc)");
  // The collector hands them over from a thread of its own.
  Eval(
      "(let loop ((n 200)) (if (and (> n 0) (< (t-finalised) 900)) "
      "(begin (gc) (usleep 5000) (t-eval \"0\") (loop (- n 1)))))");
  EXPECT_EQ(Eval("(> (t-finalised) 900)"), "+#t");
}

TEST_F(LibraryTest, BrokenLibrariesAreRefused) {
  const struct {
    const char* file;
    const char* name;
    const char* error;
  } cases[] = {
      {"/nowhere/lib.so", "lib-TEST", "/nowhere/lib.so: cannot open shared object file"},
      {HEADLESS_LIBRARY, "lib-TEST", HEADLESS_LIBRARY " has no CluiLibCleanup"},
      {OTHER_LIBRARY, "lib-TEST", OTHER_LIBRARY " is the library \"lib-OTHER\", not \"lib-TEST\""},
      {TWICE_LIBRARY, "lib-TEST",
       TWICE_LIBRARY ": row 18 of its table has a name that an earlier row has"},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_EQ(ScmVM::openLibrary(c.file, c.name, error), 0U);
    EXPECT_EQ(error.substr(0, std::string(c.error).size()), c.error);
  }
}

TEST_F(LibraryTest, ALibraryIsInitializedOnceAndCleanedUpOnce) {
  std::string error;
  EXPECT_EQ(ScmVM::openLibrary(SOUND_LIBRARY, "lib-TEST", error), 1U);
  void* const library = dlopen(SOUND_LIBRARY, RTLD_NOW);
  const auto initialized = reinterpret_cast<int (*)()>(dlsym(library, "TestInitialized"));
  EXPECT_EQ(initialized(), 1);
  ScmVM::closeLibraries();
  EXPECT_EQ(initialized(), 0);
}

}  // namespace
