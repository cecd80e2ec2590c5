#include "program/CluiProcedures.h"

#include <cstdint>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

void PushValue(const YAttribValue* value) {
  YStatus status = {0};
  switch (value == nullptr ? YAttribNull : value->tag) {
    case YAttribLong:
      return ScmVMExternal::StackPushLong(value->GetLong());
    case YAttribDouble:
      return ScmVMExternal::StackPushDouble(value->GetDouble());
    case YAttribString:
      return ScmVMExternal::StackPushString(value->GetString());
    case YAttribPoint:
      ScmVMExternal::StackPushLong(value->GetPointX(status));
      ScmVMExternal::StackPushLong(value->GetPointY(status));
      ScmVMExternal::StackCons();
      return;
    default:
      return ScmVMExternal::StackPushBoolean(0);
  }
}

const YAttribValue* ArgumentOf(const YcluiParser& parser, long word, long argument) {
  const long count = static_cast<long>(parser.numberOfToken());
  if (word < 0) word += count;
  if (word < 0 || word >= count) return nullptr;
  const YcluiToken& token = *parser.tokenAt(static_cast<YWord>(word));
  // Argument 0 of a YcluiToken is its word.
  const bool isThere = argument >= 0 && argument < token.argc() - 1;
  return isThere ? token[static_cast<int>(argument) + 1] : nullptr;
}

void TokenArgument(std::uint32_t, YStatus& status) {
  const long argument = ScmVMExternal::VMEAssertIsALong(3, status, -1);
  if (!YStatusIsGood(status)) return;
  const long word = ScmVMExternal::VMEAssertIsALong(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const long address = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  if (!YStatusIsGood(status)) return;
  const YcluiParser* parser = YcluiParser::FindLive(address);
  if (parser != nullptr) return PushValue(ArgumentOf(*parser, word, argument));
  YErr.pushError(YErrNotAlive, YErrWarning);
  ScmVMExternal::VMESetErrorArgNum(1, status);
  ScmVMExternal::VMESetErrorBadType(YScmArgLong, status, -1);
}

}  // namespace

void CluiBindProcedures() {
  ScmVM::bindProcedure("token-argument", TokenArgument, 3, 0);
}
