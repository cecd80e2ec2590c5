// Numbers as text, whatever the locale says.

#ifndef FOUNDATION_YNUMBER_H_
#define FOUNDATION_YNUMBER_H_

#include <cstddef>

#include "foundation/YTypes.h"

// Reads a decimal number from the NUL-terminated `text`: white space, an optional sign, digits with
// an optional point, an optional exponent. Hexadecimal forms, infinities and NaN are no numbers; a
// number too large or too small for a double reads as an infinity or 0. Answers the place behind
// the number with `value` set, or null with `value` untouched when there is none. Costs the length
// of the number and not that of the text.
YQRT_API const char* YReadDecimal(const char* text, double& value);

// Room that is enough for any number in the forms below, with its NUL.
constexpr std::size_t YNumberRoom = 32;

// Writes the shortest digits that read back to `value`, NUL-terminated: in fixed notation for
// decimal exponents from -5 to 15, else in scientific notation. Answers the length.
YQRT_API std::size_t YPrintDouble(double value, char (&room)[YNumberRoom]);

#endif  // FOUNDATION_YNUMBER_H_
