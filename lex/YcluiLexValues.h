// What the scanners do with the value that they fill. Internal to the lexer.

#ifndef LEX_YCLUILEXVALUES_H_
#define LEX_YCLUILEXVALUES_H_

#include "foundation/YAttribValue.h"

// Cuts a number towards zero to a long. False, with the value unchanged, when it lies outside; the
// bounds are those of the number before the cut.
inline bool SetCutToLong(YAttribValue& value, double number) {
  if (!(number >= -2147483648.0 && number <= 2147483647.0)) return false;
  value.SetLong(static_cast<std::int32_t>(number));
  return true;
}

#endif  // LEX_YCLUILEXVALUES_H_
