// A tagged value, as arguments of tokens and variables hold it.

#ifndef FOUNDATION_YATTRIBVALUE_H_
#define FOUNDATION_YATTRIBVALUE_H_

#include <cstring>

#include "foundation/YStatus.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

// Any other tag is the null value.
enum YAttribTag : std::int32_t {
  YAttribNull = 0,
  YAttribLong = 2,
  YAttribDouble = 3,
  YAttribPoint = 4,
  YAttribString = 5,
};

// A null value, a number, a point or a string. Copies are deep. A value keeps the memory of its
// string when it is overwritten, so that setting it repeatedly does not allocate.
class YQRT_API YAttribValue {
 public:
  std::int32_t tag;  // a YAttribTag

  YAttribValue();  // the null value
  // A string value: the first `n` bytes of `text`, or all of it when `n` is 0. A null `text` gives
  // an empty string.
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

  // Return the value when the tag is the one asked for, else 0, or the empty text for GetString. A
  // given status has bit 0 set when the tag matched and cleared when it did not.
  std::int32_t GetLong() const { return tag == YAttribLong ? long_ : 0; }
  double GetDouble() const { return tag == YAttribDouble ? double_ : 0; }
  std::int32_t GetLong(YStatus& status) const;
  double GetDouble(YStatus& status) const;
  std::int32_t GetPointX(YStatus& status) const;
  std::int32_t GetPointY(YStatus& status) const;
  // A pointer into the value, valid until the value changes.
  const char* GetString(YStatus& status) const;
  // The same without a status: the text of a string value, else the empty text.
  const char* GetString() const { return tag == YAttribString ? string_.buffer : ""; }
  // The length of that text in bytes. NUL bytes inside it count.
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
