// The variable of one value.

#ifndef LEX_YCLUISIMPLEVARIABLE_H_
#define LEX_YCLUISIMPLEVARIABLE_H_

#include "lex/YcluiVariable.h"

// The value can change its type with each assignment through valuePointer.
class YcluiSimpleVariable : public YcluiVariable {
 public:
  explicit YcluiSimpleVariable(const char* name);  // with a null value
  YcluiSimpleVariable(const char* name, const YAttribValue& initial);

  YAttribValue* valuePointer() override;

 private:
  YAttribValue value_;
};

#endif  // LEX_YCLUISIMPLEVARIABLE_H_
