#include "foundation/YAttribValue.h"

#include <cstring>
#include <utility>

namespace {

// Returns whether a value of the tag can be read as `wanted`, and sets the status accordingly.
bool Admit(std::int32_t tag, YAttribTag wanted, YStatus& status) {
  if (tag == wanted) {
    YStatusSetGood(status);
  } else {
    YStatusClear(status);
  }
  return tag == wanted;
}

}  // namespace

YAttribValue::YAttribValue() : tag(YAttribNull), double_(0) {}

YAttribValue::YAttribValue(const char* text, unsigned long n) : YAttribValue() {
  if (n == 0) {
    SetString(text);
  } else {
    SetString(text, n);
  }
}

YAttribValue::YAttribValue(const YAttribValue& other) : YAttribValue() {
  *this = other;
}

YAttribValue::YAttribValue(YAttribValue&& other) noexcept : YAttribValue() {
  *this = std::move(other);
}

YAttribValue::~YAttribValue() = default;

YAttribValue& YAttribValue::operator=(YAttribValue&& other) noexcept {
  tag = other.tag;
  if (tag == YAttribString) {
    string_ = std::move(other.string_);
  } else {
    std::memmove(&double_, &other.double_, sizeof double_);
  }
  return *this;
}

void YAttribValue::SetPoint(std::int32_t x, std::int32_t y) {
  tag = YAttribPoint;
  point_[0] = x;
  point_[1] = y;
}

void YAttribValue::SetString(const char* text) {
  tag = YAttribString;
  string_.assign(text);
}

std::int32_t YAttribValue::GetLong(YStatus& status) const {
  Admit(tag, YAttribLong, status);
  return GetLong();
}

double YAttribValue::GetDouble(YStatus& status) const {
  Admit(tag, YAttribDouble, status);
  return GetDouble();
}

std::int32_t YAttribValue::GetPointX(YStatus& status) const {
  return Admit(tag, YAttribPoint, status) ? point_[0] : 0;
}

std::int32_t YAttribValue::GetPointY(YStatus& status) const {
  return Admit(tag, YAttribPoint, status) ? point_[1] : 0;
}

const char* YAttribValue::GetString(YStatus& status) const {
  Admit(tag, YAttribString, status);
  return GetString();
}
