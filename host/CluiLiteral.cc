#include "host/CluiLiteral.h"

#include <cstring>

#include "foundation/YKanji.h"
#include "lex/YcluiKeyword.h"

namespace {

bool IsOneOf(char c, const char* set) {
  return c != '\0' && std::strchr(set, c) != nullptr;
}

std::size_t SkipWhiteSpace(const std::string& text, std::size_t place) {
  while (place < text.size() && IsOneOf(text[place], " \t\r\n\v\f#")) {
    place = text[place] == '#' ? text.find('\n', place) : place + 1;
  }
  return place < text.size() ? place : text.size();
}

// To the next byte of `stops` that is a character of its own and has no backslash before it.
std::size_t SkipTo(const std::string& text, std::size_t place, const char* stops) {
  while (place < text.size() && !IsOneOf(text[place], stops)) {
    if (text[place] == '\\') ++place;
    if (place < text.size()) place += CluiStepAt(text, place);
  }
  return place;
}

std::size_t SkipBehind(const std::string& text, std::size_t place, const char* stops) {
  place = SkipTo(text, place, stops);
  return place < text.size() ? place + 1 : place;
}

std::size_t SkipArgument(const std::string& text, std::size_t place) {
  if (place >= text.size()) return text.size();
  const char quote[] = {text[place], '\0'};
  if (IsOneOf(text[place], "\"'")) return SkipBehind(text, place + 1, quote);
  if (text.compare(place, 2, "${") == 0) {
    place = SkipBehind(text, place, "}");
    return place < text.size() && text[place] == '[' ? SkipBehind(text, place, "]") : place;
  }
  return SkipTo(text, place, ", \t\r\n");
}

// Behind an argument and the comma behind that.
std::size_t SkipToNext(const std::string& text, std::size_t place) {
  place = SkipWhiteSpace(text, SkipArgument(text, place));
  return place < text.size() && text[place] == ',' ? SkipWhiteSpace(text, place + 1) : place;
}

}  // namespace

std::size_t CluiStepAt(const std::string& text, std::size_t offset) {
  const bool two = offset + 1 < text.size() &&
                   YIsKanjiLead(static_cast<unsigned char>(text[offset])) &&
                   YIsKanjiTrail(static_cast<unsigned char>(text[offset + 1]));
  return two ? 2 : 1;
}

std::size_t CluiArgumentOffset(const std::string& text, std::size_t offset, int index,
                               const YcluiKeyword* keyword) {
  std::size_t place = SkipWhiteSpace(text, offset);
  for (int i = 1; i < index; ++i) {
    const bool isPoint = keyword != nullptr && keyword->argType(i - 1) == YcluiValuePoint;
    if (isPoint) place = SkipToNext(text, place);
    place = SkipToNext(text, place);
  }
  const std::size_t end = text.find_last_not_of("\r\n") + 1;
  return place < end ? place : end;
}
