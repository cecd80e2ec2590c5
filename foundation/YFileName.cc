#include "foundation/YFileName.h"

#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "foundation/YTextConverter.h"

namespace {

std::size_t PassByte(std::string_view rest, std::string& to) {
  to += rest.front();
  return 1;
}

// Copies a whole character of the encoding inside, because the rest of it alone could be converted
// as another character.
std::size_t PassCharacter(std::string_view rest, std::string& to) {
  const std::size_t length = YCharacters::LengthAt(rest);
  to += rest.substr(0, length);
  return length;
}

// Bytes that cannot be converted are copied.
std::string Converted(const char* from, const char* to, std::string_view text,
                      YTextConverter::Replace pass) {
  YTextConverter converter(from, to);
  if (!converter.isOpen()) return std::string(text);
  std::string converted;
  converter.convertAll(text, converted, pass);
  return converted;
}

// Returns the text itself when not all of it can be converted.
std::string ConvertedWhole(const char* from, const char* to, std::string_view text) {
  YTextConverter converter(from, to);
  std::string converted;
  const bool isWhole = converter.isOpen() && converter.convert(text, converted) == text.size();
  return isWhole ? converted : std::string(text);
}

bool IsUtf8(const char* encoding) {
  return std::strcmp(encoding, "UTF-8") == 0;
}

}  // namespace

std::string YFileName::FromText(std::string_view text) {
  return Converted(YEncoding::Inside(), YEncoding::OfLocale(), text, PassCharacter);
}

bool YFileName::ToText(std::string_view name, std::string& text) {
  std::string converted = Converted(YEncoding::OfLocale(), YEncoding::Inside(), name, PassByte);
  if (FromText(converted) != name) return false;
  text.swap(converted);
  return true;
}

std::string YFileName::FromUtf8(std::string_view utf8) {
  std::u32string characters;
  YCharacters::AppendFromUtf8(utf8, characters);
  std::string text;
  YCharacters::AppendAnyUtf8(characters, text);
  const char* const encoding = YEncoding::OfLocale();
  return IsUtf8(encoding) ? text : ConvertedWhole("UTF-8", encoding, text);
}

std::string YFileName::ToUtf8(std::string_view name) {
  const char* const encoding = YEncoding::OfLocale();
  const std::string text =
      IsUtf8(encoding) ? std::string(name) : ConvertedWhole(encoding, "UTF-8", name);
  std::u32string characters;
  YCharacters::AppendFromAnyUtf8(text, characters);
  std::string utf8;
  YCharacters::AppendUtf8(characters, utf8);
  return utf8;
}
