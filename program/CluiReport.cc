#include "program/CluiReport.h"

#include <cstdio>
#include <iterator>
#include <string_view>

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

// The part of a line that is shown.
struct Part {
  std::size_t begin;
  std::size_t end;
};

Part PartAround(std::size_t place, std::size_t length) {
  const bool whole = length <= WholeAtMost;
  return {whole || place <= Around ? 0 : place - Around,
          whole || length - place <= Around ? length : place + Around};
}

// The most that fits into so many columns with a mark on both sides, when not all of it does.
Part PartOnScreen(std::wstring_view line, std::size_t place, std::size_t columns) {
  const auto widthAt = [&](std::size_t i) {
    return static_cast<std::size_t>(CluiWidthOf(line[i]));
  };
  if (static_cast<std::size_t>(CluiWidthOf(line)) < columns) return {0, line.size()};
  constexpr std::size_t Marks = 2 * (std::size(Cut) - 1);
  std::size_t room = columns > Marks + 2 ? columns - Marks - 1 : 1;
  Part part = {place, place};
  for (bool grows = true; grows;) {
    grows = false;
    if (part.end < line.size() && widthAt(part.end) <= room) {
      room -= widthAt(part.end++);
      grows = true;
    }
    if (part.begin > 0 && widthAt(part.begin - 1) <= room) {
      room -= widthAt(--part.begin);
      grows = true;
    }
  }
  return part;
}

wchar_t ShownAs(wchar_t c, bool onScreen) {
  if (c == L'\t') return onScreen ? L' ' : c;
  return CluiIsControl(c) ? L'?' : c;
}

}  // namespace

CluiExcerpt CluiExcerptOf(const std::wstring& line, std::size_t character, std::size_t columns) {
  std::size_t length = line.size();
  while (length > 0 && (line[length - 1] == L'\n' || line[length - 1] == L'\r')) --length;
  const std::size_t place = character < length ? character : length;
  const Part part = columns == 0
                        ? PartAround(place, length)
                        : PartOnScreen(std::wstring_view(line).substr(0, length), place, columns);
  CluiExcerpt excerpt;
  if (part.begin > 0) excerpt.text = Cut;
  excerpt.caret.assign(excerpt.text.size(), L' ');
  for (std::size_t i = part.begin; i < part.end; ++i) {
    const wchar_t c = ShownAs(line[i], columns > 0);
    excerpt.text += c;
    if (i >= place) continue;
    if (c == L'\t') {
      excerpt.caret += c;
    } else {
      excerpt.caret.append(static_cast<std::size_t>(CluiWidthOf(c)), L' ');
    }
  }
  if (part.end < length) excerpt.text += Cut;
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

void CluiReport::show(const std::wstring& line, std::size_t character) {
  const CluiExcerpt excerpt = CluiExcerptOf(line, character, clearTerminal());
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
