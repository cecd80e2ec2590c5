// A tagged value: what an argument of a token or a variable holds.

#ifndef FOUNDATION_YATTRIBVALUE_H_
#define FOUNDATION_YATTRIBVALUE_H_

#include <cstring>

#include "foundation/YStatus.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

// The tags that mean something. Any other tag is the null value.
enum YAttribTag : std::int32_t {
  YAttribNull = 0,
  YAttribLong = 2,
  YAttribDouble = 3,
  YAttribPoint = 4,
  YAttribString = 5,
};

// Copied deeply, the string too. A value keeps the memory of its string when another value is put
// into it, so that a value that is set again and again stops allocating.
class YQRT_API YAttribValue {
 public:
  std::int32_t tag;  // a YAttribTag

  YAttribValue();  // the null value
  // A string value: the first `n` bytes of `text`, the whole text when `n` is 0. Null gives an
  // empty string.
  YAttribValue(const char* text, unsigned long n);
  YAttribValue(const YAttribValue& other);
  YAttribValue(YAttribValue&& other) noexcept;
  ~YAttribValue();

  YAttribValue& operator=(const YAttribValue& other) {
    tag = other.tag;
    if (tag == YAttribString) {
      string_.assign(other.string_);
    } else {
      std::memmove(&double_, &other.double_, sizeof double_);
    }
    return *this;
  }
  YAttribValue& operator=(YAttribValue&& other) noexcept;

  void SetNull() { tag = YAttribNull; }
  void SetLong(std::int32_t value) {
    tag = YAttribLong;
    long_ = value;
  }
  void SetDouble(double value) {
    tag = YAttribDouble;
    double_ = value;
  }
  void SetPoint(std::int32_t x, std::int32_t y);
  void SetString(const char* text);  // copies; null gives an empty string
  void SetString(const char* text, unsigned long n) {
    tag = YAttribString;
    string_.assign(text, n);
  }

  // The value, for a caller that has tested the tag. With another tag the answer is 0, the empty
  // text for GetString, and bit 0 of the status is cleared; otherwise the status is set good.
  std::int32_t GetLong() const { return tag == YAttribLong ? long_ : 0; }
  double GetDouble() const { return tag == YAttribDouble ? double_ : 0; }
  std::int32_t GetLong(YStatus& status) const;
  double GetDouble(YStatus& status) const;
  std::int32_t GetPointX(YStatus& status) const;
  std::int32_t GetPointY(YStatus& status) const;
  // A pointer into the value, good until the value changes.
  const char* GetString(YStatus& status) const;
  // The same without a status: the text of a string value, else the empty text.
  const char* GetString() const { return tag == YAttribString ? string_.buffer : ""; }
  // The length of that text, with any NUL bytes it was given.
  std::uint32_t GetStringLength() const { return tag == YAttribString ? string_.length : 0; }

 private:
  union {
    std::int32_t long_;
    double double_;
    std::int32_t point_[2];
  };
  YString string_;
};

#endif  // FOUNDATION_YATTRIBVALUE_H_
