#include "lex/YcluiSimpleVariable.h"

YcluiSimpleVariable::YcluiSimpleVariable(const char* name)
    : YcluiVariable(name, YcluiVariableSimple) {}

YcluiSimpleVariable::YcluiSimpleVariable(const char* name, const YAttribValue& initial)
    : YcluiVariable(name, YcluiVariableSimple), value_(initial) {}

YAttribValue* YcluiSimpleVariable::valuePointer() {
  return &value_;
}
