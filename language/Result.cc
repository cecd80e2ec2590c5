#include "language/Result.h"

#include <algorithm>

namespace yqrtClui {

namespace {

constexpr std::size_t ShownWords = 8;

// "; expected A, B or C"
std::string ExpectedText(const std::vector<std::string>& expected) {
  const std::size_t shown = std::min(expected.size(), ShownWords);
  std::string text;
  for (std::size_t i = 0; i < shown; ++i) {
    const bool isLast = i + 1 == expected.size();
    text += i == 0 ? "; expected " : isLast ? " or " : ", ";
    text += expected[i];
  }
  if (shown < expected.size()) {
    text += " or one of " + std::to_string(expected.size() - shown) + " others";
  }
  return text;
}

}  // namespace

std::string Refusal::text(const std::string& name) const {
  std::string place = name;
  if (line > 0) {
    if (!name.empty()) place += ':';
    place += std::to_string(line) + ":" + std::to_string(column);
  }
  return place.empty() ? sentence() : place + ": " + sentence();
}

std::string Refusal::sentence() const {
  return message + ExpectedText(expected);
}

}  // namespace yqrtClui
