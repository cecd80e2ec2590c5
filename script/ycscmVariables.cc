// The primitives for aliases and variables.

#include <cstdint>
#include <vector>

#include "foundation/YAttribValue.h"
#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "foundation/YcluiLimits.h"
#include "lex/YcluiVariable.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmPrimitives.h"

namespace {

using Values = std::vector<YAttribValue, YAllocator<YAttribValue>>;

constexpr YArgNum NamePosition = 2;
constexpr YArgNum ValuePosition = 3;
constexpr YArgNum IndexPosition = 4;

// Pops a string, a long or a double into `value`. For any other type returns false, sets a null
// value and leaves the stack unchanged. Clears bit 0 for a long that is out of range.
bool popValue(YAttribValue& value, YStatus& status) {
  value.SetNull();
  if (ScmVMExternal::StackStringP() != 0) {
    value.SetString(ScmVMExternal::StackPopString(status));
    return true;
  }
  if (ycscmLongIsOnTop()) {
    const long number = ScmVMExternal::StackPopLong(status);
    if (!ycscmFits<std::int32_t>(number)) ycscmRefuse(ValuePosition, YScmArgLong, status);
    value.SetLong(static_cast<std::int32_t>(number));
    return true;
  }
  if (ScmVMExternal::StackDoubleP() != 0 || ScmVMExternal::StackFloatP() != 0) {
    value.SetDouble(ScmVMExternal::StackPopDouble(status));
    return true;
  }
  return false;
}

// The number of elements of the list on top, which is not popped. Clears bit 0 for an improper or
// circular list.
std::uint32_t countElements(YStatus& status) {
  std::uint32_t count = 0;
  ScmVMExternal::StackDuplicate();
  while (ScmVMExternal::StackPairP() != 0 && count < YcluiMostListElements) {
    ScmVMExternal::StackCdr();
    ++count;
  }
  if (ScmVMExternal::StackNullP() == 0) ycscmRefuse(ValuePosition, YScmArgPair, status);
  ScmVMExternal::StackPop(status);
  return count;
}

// Pops the list into `values`. An element of another type becomes a null value.
void popElements(Values& values, YStatus& status) {
  for (YAttribValue& value : values) {
    ScmVMExternal::StackDuplicate();
    ScmVMExternal::StackCar();
    if (!popValue(value, status)) ScmVMExternal::StackPop(status);
    if (!YStatusIsGood(status)) return;
    ScmVMExternal::StackCdr();
  }
  ScmVMExternal::StackPop(status);
}

// The first two arguments of all these primitives.
struct Target {
  const char* name = nullptr;
  YcluiParser* parser = nullptr;

  // Returns false, with bit 0 clear, when one is invalid.
  bool pop(YStatus& status) {
    name = ycscmPopString(NamePosition, status);
    if (!YStatusIsGood(status)) return false;
    parser = ycscmPopParser(status);
    return parser != nullptr;
  }
};

void setSimple(YStatus& status) {
  YAttribValue value;
  if (!popValue(value, status)) ycscmRefuse(ValuePosition, YScmArgString, status);
  if (!YStatusIsGood(status)) return;
  Target target;
  if (!target.pop(status)) return;
  ScmVMExternal::StackPushBoolean(target.parser->setVariable(target.name, value));
}

std::uint32_t popIndex(YStatus& status) {
  const long index = ScmVMExternal::VMEAssertIsALong(IndexPosition, status, -1);
  if (YStatusIsGood(status) && !ycscmFits<std::uint32_t>(index)) {
    cluiWarning(YErrOutsideArray);
    ycscmRefuse(IndexPosition, YScmArgLong, status);
  }
  return static_cast<std::uint32_t>(index);
}

void setElement(YStatus& status) {
  const std::uint32_t index = popIndex(status);
  if (!YStatusIsGood(status)) return;
  YAttribValue value;
  if (!popValue(value, status)) ycscmRefuse(ValuePosition, YScmArgString, status);
  if (!YStatusIsGood(status)) return;
  Target target;
  if (!target.pop(status)) return;
  ScmVMExternal::StackPushBoolean(target.parser->setVariable(target.name, value, index));
}

void setList(YStatus& status) {
  const std::uint32_t count = countElements(status);
  if (!YStatusIsGood(status)) return;
  const bool isTooLong = count > YcluiMostElements;
  Values values(isTooLong ? 0 : count);
  popElements(values, status);
  if (!YStatusIsGood(status)) return;
  Target target;
  if (!target.pop(status)) return;
  ScmVMExternal::StackPushBoolean(
      isTooLong ? cluiWarning(YErrOutsideArray)
                : target.parser->setVariable(target.name, count, values.data()));
}

}  // namespace

void ycscmSetAlias(std::uint32_t, YStatus& status) {
  const char* text = ycscmPopString(ValuePosition, status);
  if (!YStatusIsGood(status)) return;
  Target target;
  if (!target.pop(status)) return;
  ScmVMExternal::StackPushBoolean(target.parser->setAlias(target.name, text));
}

void ycscmUnsetAlias(std::uint32_t, YStatus& status) {
  Target target;
  if (!target.pop(status)) return;
  ScmVMExternal::StackPushBoolean(target.parser->unsetAlias(target.name));
}

void ycscmSetVariable(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, ValuePosition, IndexPosition, status) == 0) return;
  if (argc == IndexPosition) {
    setElement(status);
  } else if (ScmVMExternal::StackPairP() != 0) {
    setList(status);
  } else {
    setSimple(status);
  }
}
