// Writes characters and styles for a terminal.

#ifndef TERMINAL_YCLUIPEN_H_
#define TERMINAL_YCLUIPEN_H_

#include <string>
#include <string_view>

#include "foundation/YTextConverter.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiStyle.h"

// Remembers the style in which the terminal writes, which is the plain one at first.
class YcluiPen {
 public:
  // `encoding` is that of the terminal, by a name that iconv knows; an unknown one means UTF-8.
  YcluiPen(const YcluiCapabilities& capabilities, const std::string& encoding);

  void set(const YcluiStyle& style, std::string& output);
  // A display unit of so many columns; question marks where the terminal's encoding lacks it.
  void write(std::u32string_view unit, std::size_t width, std::string& output);

 private:
  const YcluiCapabilities& capabilities_;
  YTextConverter fromUtf8_;  // not open for UTF-8
  YcluiStyle style_;
  std::string utf8_;
};

#endif  // TERMINAL_YCLUIPEN_H_
