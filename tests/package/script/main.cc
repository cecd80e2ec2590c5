// A host with the script engine: opens the library by its name and lets a script add a word.

#include <platform/engine/ScmVM.h>
#include <yqrtClui/yqrtClui.h>

#include <cstdio>
#include <cstring>

#if YQRTCLUI_VERSION_NUMBER < 100
#error "expected version 0.1.0 or later"
#endif

int main() {
  if (std::strcmp(YcluiVersion(), YQRTCLUI_VERSION) != 0) return 2;
  std::string error;
  if (ScmVM::start(ScmVM::DefaultMemoryLimit, error) == 0 ||
      ScmVM::openLibrary(YcluiLibraryFile, YcluiLibraryName, error) == 0) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  char result[16];
  YStatus status{};
  ScmVMExternal::ExecuteString("(let ((p (clui-parser-new 0))) (positive? (clui-token p \"go\")))",
                               result, sizeof result, status);
  // The script's parser is one of the library that this host is linked with.
  std::printf("%s %s\n", result, YcluiParser::Live(0) != nullptr ? "here" : "elsewhere");
  return 0;
}
