#include "program/CluiLiteral.h"

#include <algorithm>
#include <cstring>

#include "foundation/YKanji.h"
#include "foundation/YNumber.h"
#include "lex/YcluiKeyword.h"

namespace {

bool IsOneOf(char c, const char* set) {
  return c != '\0' && std::strchr(set, c) != nullptr;
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

std::size_t SkipArgument(const std::string& text, std::size_t place, bool isNumber) {
  if (place >= text.size()) return text.size();
  const char quote[] = {text[place], '\0'};
  if (IsOneOf(text[place], "\"'")) return SkipBehind(text, place + 1, quote);
  if (text.compare(place, 2, "${") == 0) {
    place = SkipBehind(text, place, "}");
    return place < text.size() && text[place] == '[' ? SkipBehind(text, place, "]") : place;
  }
  return isNumber ? CluiSkipNumber(text, place) : SkipTo(text, place, ", \t\r\n");
}

// Behind an argument and the comma behind that, which is none of its when it stands behind `cut`.
void SkipToNext(const std::string& text, std::size_t cut, bool isNumber, CluiArgumentPlace& place) {
  const std::size_t end = SkipArgument(text, place.offset, isNumber);
  place.offset = CluiSkipWhiteSpace(text, end);
  const bool breaksOff = end <= cut && place.offset >= cut;
  place.separated = !breaksOff && place.offset < text.size() && text[place.offset] == ',';
  if (place.separated) place.offset = CluiSkipWhiteSpace(text, place.offset + 1);
}

}  // namespace

std::size_t CluiSkipWhiteSpace(const std::string& text, std::size_t offset) {
  while (offset < text.size() && IsOneOf(text[offset], " \t\r\n\v\f#")) {
    offset = text[offset] == '#' ? text.find('\n', offset) : offset + 1;
  }
  return std::min(offset, text.size());
}

std::size_t CluiSkipNumber(const std::string& text, std::size_t offset) {
  double number = 0;
  const char* end = YReadDecimal(text.c_str() + offset, number);
  return end == nullptr ? offset : static_cast<std::size_t>(end - text.c_str());
}

std::size_t CluiStepAt(const std::string& text, std::size_t offset) {
  const bool two = offset + 1 < text.size() &&
                   YIsKanjiLead(static_cast<unsigned char>(text[offset])) &&
                   YIsKanjiTrail(static_cast<unsigned char>(text[offset + 1]));
  return two ? 2 : 1;
}

bool CluiIsBlank(const std::string& text) {
  return CluiSkipWhiteSpace(text, 0) == text.size();
}

bool CluiHasRest(const std::string& text, std::size_t offset) {
  const std::size_t blank = text.find_first_of(" \t", offset);
  return blank != std::string::npos && CluiSkipWhiteSpace(text, blank) < text.size();
}

CluiArgumentPlace CluiFindArgument(const std::string& text, std::size_t offset, std::size_t cut,
                                   int index, const YcluiKeyword* keyword) {
  CluiArgumentPlace place = {CluiSkipWhiteSpace(text, offset), true};
  for (int i = 1; i < index; ++i) {
    const YcluiValueType type = keyword == nullptr ? YcluiValueNone : keyword->argType(i - 1);
    if (type == YcluiValuePoint) SkipToNext(text, cut, true, place);
    SkipToNext(text, cut, type != YcluiValueNone && type != YcluiValueString, place);
  }
  const std::size_t end = text.find_last_not_of("\r\n") + 1;
  place.offset = std::min(place.offset, end);
  return place;
}
