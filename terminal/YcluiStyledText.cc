#include "terminal/YcluiStyledText.h"

#include <algorithm>

YcluiStyledText& YcluiStyledText::add(std::string_view text, YcluiStyle style) {
  text_ += text;
  if (!spans_.empty() && spans_.back().style == style) {
    spans_.back().end = text_.size();
  } else if (!text.empty()) {
    spans_.push_back({text_.size(), style});
  }
  return *this;
}

void YcluiStyledText::clear() {
  text_.clear();
  spans_.clear();
}

YcluiStyle YcluiStyledText::styleAt(std::size_t offset) const {
  const auto found =
      std::upper_bound(spans_.begin(), spans_.end(), offset,
                       [](std::size_t at, const Span& span) { return at < span.end; });
  return found == spans_.end() ? YcluiStyle{} : found->style;
}
