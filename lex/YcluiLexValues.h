// Conversion of values by the scanners. Internal to the lexer.

#ifndef LEX_YCLUILEXVALUES_H_
#define LEX_YCLUILEXVALUES_H_

#include "foundation/YAttribValue.h"

// Sets the value to the number truncated to a long. Returns false and leaves the value unchanged
// when the number itself, before it is truncated, is outside the range of a long.
inline bool SetTruncated(YAttribValue& value, double number) {
  if (!(number >= -2147483648.0 && number <= 2147483647.0)) return false;
  value.SetLong(static_cast<std::int32_t>(number));
  return true;
}

#endif  // LEX_YCLUILEXVALUES_H_
