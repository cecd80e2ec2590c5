#include "foundation/YFileName.h"

#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "foundation/YKanji.h"
#include "foundation/YTextConverter.h"

namespace {

std::size_t PassByte(std::string_view rest, std::string& to) {
  to += rest.front();
  return 1;
}

// Copies a whole character of the encoding inside, because its second byte alone would be converted
// as another character.
std::size_t PassCharacter(std::string_view rest, std::string& to) {
  const bool isDouble = rest.size() > 1 && YIsKanjiLead(static_cast<unsigned char>(rest[0])) &&
                        YIsKanjiTrail(static_cast<unsigned char>(rest[1]));
  to += rest.substr(0, isDouble ? 2 : 1);
  return isDouble ? 2 : 1;
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
  for (const char32_t character : characters) {
    if (character > YCharacters::LoneByte && character < YCharacters::LoneByte + 256) {
      text.push_back(static_cast<char>(character - YCharacters::LoneByte));
    } else {
      YCharacters::AppendUtf8({&character, 1}, text);
    }
  }
  const char* const encoding = YEncoding::OfLocale();
  return IsUtf8(encoding) ? text : ConvertedWhole("UTF-8", encoding, text);
}

std::string YFileName::ToUtf8(std::string_view name) {
  const char* const encoding = YEncoding::OfLocale();
  const std::string text =
      IsUtf8(encoding) ? std::string(name) : ConvertedWhole(encoding, "UTF-8", name);
  std::u32string characters;
  for (std::string_view rest = text; !rest.empty();) {
    rest.remove_prefix(YCharacters::AppendFromUtf8(rest, characters));
    if (rest.empty()) break;
    characters.push_back(YCharacters::LoneByte + static_cast<unsigned char>(rest.front()));
    rest.remove_prefix(1);
  }
  std::string utf8;
  YCharacters::AppendUtf8(characters, utf8);
  return utf8;
}
