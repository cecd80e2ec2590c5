#include "program/CluiReport.h"

#include <cstdio>

#include "program/text/CluiWidth.h"
#include "program/text/CluiWrap.h"

namespace {

constexpr std::size_t WholeAtMost = 120;  // longest line, in characters, that is shown whole
constexpr std::size_t Around = 60;        // characters of a longer line on each side of the caret
constexpr wchar_t Cut[] = L"...";

std::string HeadOf(const CluiPlace& place) {
  std::string head = place.name;
  if (head.empty()) return head;
  if (place.line > 0) head.append(":").append(std::to_string(place.line));
  if (place.column > 0) head.append(":").append(std::to_string(place.column));
  return head + ": ";
}

}  // namespace

CluiExcerpt CluiExcerptOf(const std::wstring& line, std::size_t character) {
  std::size_t length = line.size();
  while (length > 0 && (line[length - 1] == L'\n' || line[length - 1] == L'\r')) --length;
  const std::size_t place = character < length ? character : length;
  const bool whole = length <= WholeAtMost;
  const std::size_t from = whole || place <= Around ? 0 : place - Around;
  const std::size_t to = whole || length - place <= Around ? length : place + Around;
  CluiExcerpt excerpt;
  if (from > 0) excerpt.text = Cut;
  excerpt.caret.assign(excerpt.text.size(), L' ');
  for (std::size_t i = from; i < to; ++i) {
    const wchar_t c = line[i] != L'\t' && CluiIsControl(line[i]) ? L'?' : line[i];
    excerpt.text += c;
    if (i >= place) continue;
    if (c == L'\t') {
      excerpt.caret += c;
    } else {
      excerpt.caret.append(static_cast<std::size_t>(CluiWidthOf(c)), L' ');
    }
  }
  if (to < length) excerpt.text += Cut;
  excerpt.caret += L'^';
  return excerpt;
}

void CluiReport::print(const CluiPlace& place, const std::wstring& message) {
  const std::string head = HeadOf(place);
  const std::size_t width = clearTerminal();
  if (width == 0) return write(head + encoding_.toUser(message));
  write(encoding_.toUser(CluiWrapped(encoding_.fromUser(head) + message, width)));
}

void CluiReport::print(const std::wstring& message) {
  print(CluiPlace(), message);
}

void CluiReport::show(const CluiExcerpt& excerpt) {
  clearTerminal();
  write(encoding_.toUser(excerpt.text));
  write(encoding_.toUser(excerpt.caret));
}

std::size_t CluiReport::clearTerminal() {
  progress_.erase();
  return before_ ? before_() : 0;
}

void CluiReport::write(const std::string& line) {
  std::fprintf(stderr, "%s\n", line.c_str());
}
