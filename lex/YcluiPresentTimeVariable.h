// The variable that answers the time.

#ifndef LEX_YCLUIPRESENTTIMEVARIABLE_H_
#define LEX_YCLUIPRESENTTIMEVARIABLE_H_

#include "lex/YcluiSimpleVariable.h"

// "presentTime". Each call of valuePointer puts the local time into the value, as a string of the
// form "Www Mmm dd hh:mm:ss yyyy"; what is assigned to it lasts until then.
class YcluiPresentTimeVariable : public YcluiSimpleVariable {
 public:
  YcluiPresentTimeVariable();

  YAttribValue* valuePointer() override;
};

#endif  // LEX_YCLUIPRESENTTIMEVARIABLE_H_
