// Variables of one value.

#ifndef LEX_YCLUISIMPLEVARIABLE_H_
#define LEX_YCLUISIMPLEVARIABLE_H_

#include "lex/YcluiVariable.h"

// An assignment through valuePointer may change the type of the value.
class YcluiSimpleVariable : public YcluiVariable {
 public:
  explicit YcluiSimpleVariable(const char* name);  // with a null value
  YcluiSimpleVariable(const char* name, const YAttribValue& initial);

  YAttribValue* valuePointer() override;

 private:
  YAttribValue value_;
};

#endif  // LEX_YCLUISIMPLEVARIABLE_H_
