// The primitives that complete words.

#include <cstdint>

#include "foundation/YString.h"
#include "foundation/YString_Array.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmPrimitives.h"

namespace {

// A parser and the typed part of a word.
struct Unfinished {
  const char* text = "";
  YcluiParser* parser = nullptr;

  // Returns false, with bit 0 clear, when an argument is invalid.
  bool pop(std::uint32_t argc, YStatus& status) {
    if (ScmVMExternal::VMECheckArgCount(argc, 1, 2, status) == 0) return false;
    if (argc == 2) text = ycscmPopString(2, status);
    if (!YStatusIsGood(status)) return false;
    parser = ycscmPopParser(status);
    return parser != nullptr;
  }
};

}  // namespace

void ycscmFindPossibleToken(std::uint32_t argc, YStatus& status) {
  Unfinished word;
  if (!word.pop(argc, status)) return;
  YString_Array list;
  const int count = word.parser->completionList(word.text, list);
  for (int i = 0; i < count; ++i) ScmVMExternal::StackPushString(list[i].buffer);
  ScmVMExternal::StackPushNull();
  for (int i = 0; i < count; ++i) ScmVMExternal::StackCons();
}

void ycscmCompleteToken(std::uint32_t argc, YStatus& status) {
  Unfinished word;
  if (!word.pop(argc, status)) return;
  YString completed;
  unsigned long unique = 0;
  if (word.parser->completionString(word.text, completed, unique) == 0) {
    ScmVMExternal::StackPushBoolean(0);
  } else if (unique != 0 && completed == word.text) {
    ScmVMExternal::StackPushBoolean(1);
  } else {
    ScmVMExternal::StackPushString(completed.buffer);
  }
}
