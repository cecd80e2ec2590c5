// The variable whose value is the current time.

#ifndef LEX_YCLUIPRESENTTIMEVARIABLE_H_
#define LEX_YCLUIPRESENTTIMEVARIABLE_H_

#include "lex/YcluiSimpleVariable.h"

// "presentTime". Each call of valuePointer sets the value to the local time, as a string of the
// form "Www Mmm dd hh:mm:ss yyyy". An assigned value lasts until the next call.
class YcluiPresentTimeVariable : public YcluiSimpleVariable {
 public:
  YcluiPresentTimeVariable();

  YAttribValue* valuePointer() override;
};

#endif  // LEX_YCLUIPRESENTTIMEVARIABLE_H_
