// Conversion between numbers and text, independent of the locale.

#ifndef FOUNDATION_YNUMBER_H_
#define FOUNDATION_YNUMBER_H_

#include <cstddef>

#include "foundation/YTypes.h"

// Reads a decimal number from the start of the NUL-terminated `text`: white space, an optional
// sign, digits with an optional point, an optional exponent. Hexadecimal forms, infinities and NaN
// are not accepted; a number too large or too small for a double reads as an infinity or 0. Sets
// `value` and returns the end of the number, or returns null and leaves `value` alone when there is
// none. The time is linear in the length of the number, not of the text.
YQRT_API const char* YReadDecimal(const char* text, double& value);

// The size of a buffer for any number as YPrintDouble writes it, including the NUL.
constexpr std::size_t YNumberRoom = 32;

// Writes the shortest digits that read back to `value`, NUL-terminated: in fixed notation for
// decimal exponents from -5 to 15, else in scientific notation. Returns the length.
YQRT_API std::size_t YPrintDouble(double value, char (&room)[YNumberRoom]);

#endif  // FOUNDATION_YNUMBER_H_
