#include "terminal/YcluiPen.h"

#include "foundation/YCharacters.h"

YcluiPen::YcluiPen(const YcluiCapabilities& capabilities, const std::string& encoding)
    : capabilities_(capabilities) {
  if (encoding != "UTF-8") fromUtf8_.open("UTF-8", encoding.c_str());
}

void YcluiPen::set(const YcluiStyle& style, std::string& output) {
  if (style == style_) return;
  if (style_ != YcluiStyle{}) output += capabilities_.plain;
  style_ = style;
  if (style.bold) output += capabilities_.bold;
  if (style.dim) output += capabilities_.dim;
  if (style.underline) output += capabilities_.underline;
  if (style.underline && capabilities_.underlineHasNoColour) return;
  if (style.dim && capabilities_.dimHasNoColour) return;
  const std::size_t count = capabilities_.colours.size();
  if (style.colour < 0 || style.colour > 15 || count < 8) return;
  output += capabilities_.colours[static_cast<std::size_t>(style.colour) % count];
}

void YcluiPen::write(std::u32string_view unit, std::size_t width, std::string& output) {
  if (unit.size() == 1 && unit[0] < 128) {
    output += static_cast<char>(unit[0]);
    return;
  }
  if (!fromUtf8_.isOpen()) return YCharacters::AppendUtf8(unit, output);
  utf8_.clear();
  YCharacters::AppendUtf8(unit, utf8_);
  const std::size_t before = output.size();
  if (fromUtf8_.convert(utf8_, output) == utf8_.size()) return;
  output.resize(before);
  output.append(width, '?');
}
