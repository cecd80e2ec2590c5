// The primitives of the field binding.

#include <cstdint>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "platform/ui/YuiTextField.h"
#include "script/YcluiFieldBinding.h"
#include "script/YcluiFieldFormat.h"
#include "script/ycscmArguments.h"
#include "script/ycscmPrimitives.h"

namespace {

constexpr std::uint32_t EchoPosition = 3;
constexpr std::uint32_t SyntaxPosition = 4;
constexpr std::uint32_t FeedPosition = 3;

// Pops a format with at most `most` texts. Records YErrBadFormat for an invalid one.
const char* popFormat(YArgNum position, int most, YStatus& status) {
  const char* format = ycscmPopString(position, status);
  if (!YStatusIsGood(status) || YcluiFormatIsValid(format, most)) return format;
  cluiWarning(YErrBadFormat);
  ycscmRefuse(position, YScmArgString, status);
  return nullptr;
}

// The existing object of the class for the handle. Records YErrNotAlive when there is none.
template <class Kind>
Kind* findLive(const void* handle, YArgNum position, YStatus& status) {
  Kind* found = YStatusIsGood(status) ? Kind::FindLive(handle) : nullptr;
  if (found == nullptr && YStatusIsGood(status)) {
    cluiWarning(YErrNotAlive);
    ycscmRefuse(position, YScmArgHandle, status);
  }
  return found;
}

YcluiFieldBinding* popBinding(YStatus& status) {
  return findLive<YcluiFieldBinding>(ScmVMExternal::VMEAssertIsAHandle(1, status, -1), 1, status);
}

// Also returns null for a null handle, with the status good.
YuiTextField* popField(YStatus& status) {
  const void* handle = ScmVMExternal::VMEAssertIsAHandle(2, status, -1);
  return handle == nullptr ? nullptr : findLive<YuiTextField>(handle, 2, status);
}

// Also returns null for 0, with the status good.
YcluiParser* popParserIfAny(YStatus& status) {
  const long address = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  return address == 0 ? nullptr : ycscmLiveParser(address, status);
}

}  // namespace

void ycscmAttachField(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, 2, SyntaxPosition, status) == 0) return;
  const char* synFormat = argc == SyntaxPosition ? popFormat(SyntaxPosition, 2, status) : nullptr;
  if (!YStatusIsGood(status)) return;
  const char* echoFormat = argc >= EchoPosition ? popFormat(EchoPosition, 1, status) : nullptr;
  if (!YStatusIsGood(status)) return;
  YuiTextField* field = popField(status);
  if (!YStatusIsGood(status)) return;
  YcluiParser* parser = popParserIfAny(status);
  if (!YStatusIsGood(status)) return;
  ScmVMExternal::StackPushHandle(YcluiFieldBinding::Attach(field, parser, echoFormat, synFormat),
                                 nullptr, nullptr);
}

void ycscmSetKeystrokeAction(std::uint32_t, YStatus& status) {
  const char* format = popFormat(3, 1, status);
  if (!YStatusIsGood(status)) return;
  if (ScmVMExternal::StackCharP() == 0) {
    YStatusClear(status);
    return;
  }
  const long key = ScmVMExternal::StackPopChar(status);
  if (!ycscmFits<std::uint8_t>(key)) {
    ycscmRefuse(2, YScmArgChar, status);
    return;
  }
  YcluiFieldBinding* binding = popBinding(status);
  if (binding == nullptr) return;
  ScmVMExternal::StackPushBoolean(binding->setKeyAction(static_cast<char>(key), format));
}

void ycscmReferCurrentWord(std::uint32_t, YStatus& status) {
  const YcluiFieldBinding* binding = popBinding(status);
  if (binding != nullptr) ScmVMExternal::StackPushString(binding->currentWord());
}

void ycscmReplaceCurrentWord(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, 1, FeedPosition, status) == 0) return;
  const YWord feed =
      argc == FeedPosition ? ScmVMExternal::VMEAssertIsABoolean(FeedPosition, status, -1) : 0;
  if (!YStatusIsGood(status)) return;
  const char* word = ycscmPopString(2, status);
  if (!YStatusIsGood(status)) return;
  YcluiFieldBinding* binding = popBinding(status);
  if (binding == nullptr) return;
  binding->replaceCurrentWord(word, feed);
  ScmVMExternal::StackPushNull();
}
