// What a language does with texts, as text.

#ifndef TESTS_LANGUAGE_TRACE_H_
#define TESTS_LANGUAGE_TRACE_H_

#include <sstream>
#include <string>

#include "yqrtClui/Language.h"

namespace yqrtClui {

inline std::ostream& operator<<(std::ostream& out, const yqrtClui::Point& point) {
  return out << point.x << ',' << point.y;
}

}  // namespace yqrtClui

// Commands write into it; the test compares what they have written.
class Trace {
 public:
  template <class... Parts>
  void operator()(const Parts&... parts) {
    (text_ << ... << parts) << ';';
  }
  // What was written since the last call.
  std::string taken() {
    std::string text = text_.str();
    text_.str("");
    return text;
  }

 private:
  std::ostringstream text_;
};

#endif  // TESTS_LANGUAGE_TRACE_H_
