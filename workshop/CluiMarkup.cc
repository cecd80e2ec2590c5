#include "workshop/CluiMarkup.h"

#include <algorithm>

namespace {

bool BeginsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

bool IsControl(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return (code < 0x20 && byte != '\n' && byte != '\t') || code == 0x7F;
}

const char* EntityOf(char byte) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return IsControl(byte) ? "\uFFFD" : nullptr;
  }
}

}  // namespace

void CluiAppendEscaped(std::string& markup, std::string_view text) {
  for (const char byte : text) {
    const char* const entity = EntityOf(byte);
    if (entity != nullptr) {
      markup += entity;
    } else {
      markup += byte;
    }
  }
}

std::string CluiEscaped(std::string_view text) {
  std::string markup;
  CluiAppendEscaped(markup, text);
  return markup;
}

std::size_t CluiCountCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
}

std::string CluiCutTo(std::string_view text, std::size_t characters) {
  if (CluiCountCharacters(text) <= characters) return std::string(text);
  std::size_t end = 0;
  for (std::size_t count = 0; end < text.size(); ++end) {
    if (BeginsCharacter(text[end]) && ++count == characters) break;
  }
  return std::string(text.substr(0, end)) + "\u2026";
}
