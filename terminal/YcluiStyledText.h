// Text with styles.

#ifndef TERMINAL_YCLUISTYLEDTEXT_H_
#define TERMINAL_YCLUISTYLEDTEXT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/YTypes.h"
#include "terminal/YcluiStyle.h"

// Bytes in the encoding inside the process. A style may begin at any byte: a display unit has that
// of its first byte.
class YQRT_API YcluiStyledText {
 public:
  YcluiStyledText() = default;
  YcluiStyledText(std::string_view text, YcluiStyle style = {}) { add(text, style); }
  YcluiStyledText(const std::string& text, YcluiStyle style = {}) { add(text, style); }
  YcluiStyledText(const char* text, YcluiStyle style = {}) { add(text, style); }

  YcluiStyledText& add(std::string_view text, YcluiStyle style = {});
  void clear();

  const std::string& text() const { return text_; }
  YcluiStyle styleAt(std::size_t offset) const;

 private:
  struct Span {
    std::size_t end;
    YcluiStyle style;
  };

  std::string text_;
  std::vector<Span> spans_;
};

#endif  // TERMINAL_YCLUISTYLEDTEXT_H_
