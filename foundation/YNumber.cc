#include "foundation/YNumber.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "foundation/YAscii.h"

namespace {

const char* SkipDigits(const char* p) {
  while (YIsDigit(*p)) ++p;
  return p;
}

// The end of the digits and the point of an unsigned number; null when it has no digit.
const char* MantissaEnd(const char* p) {
  const char* whole = SkipDigits(p);
  if (*whole != '.') return whole == p ? nullptr : whole;
  const char* fraction = SkipDigits(whole + 1);
  return fraction - p == 1 ? nullptr : fraction;
}

// The end of the exponent at `p`, or `p` when there is no complete one.
const char* ExponentEnd(const char* p) {
  if (*p != 'e' && *p != 'E') return p;
  const char* digits = p + 1;
  if (*digits == '+' || *digits == '-') ++digits;
  const char* end = SkipDigits(digits);
  return end == digits ? p : end;
}

// Reads an integer of at most 15 digits, which is what most numbers are. Returns null for any other
// number.
const char* ReadWhole(const char* p, double& value) {
  constexpr int MostDigits = 15;  // a double holds all of them
  std::int64_t whole = 0;
  const char* end = p;
  for (; YIsDigit(*end) && end - p < MostDigits; ++end) whole = whole * 10 + (*end - '0');
  if (end == p || YIsDigit(*end) || *end == '.' || *end == 'e' || *end == 'E') return nullptr;
  value = static_cast<double>(whole);
  return end;
}

// The value of a non-zero number that is outside the range of a double: infinity when its order of
// magnitude is positive, else 0. The order of magnitude is the number of digits before the point,
// without leading zeros, plus the exponent.
double OutOfRange(const char* mantissa, const char* mantissaEnd, const char* end) {
  const char* first = mantissa;
  while (*first == '0' || *first == '.') ++first;
  double magnitude = static_cast<double>(SkipDigits(mantissa) - first);
  if (mantissaEnd != end) {
    const char* sign = mantissaEnd + 1;
    long long exponent = 0;
    const auto read = std::from_chars(*sign == '+' ? sign + 1 : sign, end, exponent);
    if (read.ec != std::errc()) exponent = *sign == '-' ? -LLONG_MAX : LLONG_MAX;
    magnitude += static_cast<double>(exponent);
  }
  return magnitude > 0 ? HUGE_VAL : 0;
}

// The decimal exponent in a number in scientific notation.
int ExponentOf(const char* begin, const char* end) {
  const char* sign = std::find(begin, end, 'e') + 1;
  int exponent = 0;
  std::from_chars(*sign == '+' ? sign + 1 : sign, end, exponent);
  return exponent;
}

}  // namespace

const char* YReadDecimal(const char* text, double& value) {
  const char* p = text;
  while (YIsWhiteSpace(*p)) ++p;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  const char* wholeEnd = ReadWhole(p, value);
  if (wholeEnd != nullptr) {
    if (negative) value = -value;
    return wholeEnd;
  }
  const char* mantissaEnd = MantissaEnd(p);
  if (mantissaEnd == nullptr) return nullptr;
  const char* end = ExponentEnd(mantissaEnd);
  double read = 0;
  if (std::from_chars(p, end, read).ec == std::errc::result_out_of_range) {
    read = OutOfRange(p, mantissaEnd, end);
  }
  value = negative ? -read : read;
  return end;
}

std::size_t YPrintDouble(double value, char (&room)[YNumberRoom]) {
  char* const last = room + YNumberRoom - 1;
  if (std::isnan(value)) value = std::fabs(value);  // a NaN is printed without its sign
  char* end = std::to_chars(room, last, value, std::chars_format::scientific).ptr;
  if (std::isfinite(value)) {
    const int exponent = ExponentOf(room, end);
    if (exponent >= -5 && exponent <= 15) {
      end = std::to_chars(room, last, value, std::chars_format::fixed).ptr;
    }
  }
  *end = '\0';
  return static_cast<std::size_t>(end - room);
}
