#include "program/text/CluiWrap.h"

#include <string_view>

#include "program/text/CluiWidth.h"

namespace {

constexpr std::size_t TabStop = 8;
constexpr std::wstring_view Closing =
    L"\u3001\u3002\uFF0C\uFF0E\u300D\u300F\uFF09\u3011\u30FB\u30FC\uFF01\uFF1F,.;:!?)]\"'";
constexpr std::wstring_view Opening = L"\u300C\u300E\uFF08\u3010([\"'";

bool IsBlank(wchar_t c) {
  return c == L' ' || c == L'\t';
}

std::size_t WidthAt(wchar_t c, std::size_t column) {
  if (c == L'\t') return TabStop - column % TabStop;
  return static_cast<std::size_t>(CluiWidthOf(c));
}

// Whether a row may begin at this character.
bool MayBreakAt(std::wstring_view line, std::size_t i) {
  const wchar_t before = line[i - 1];
  const wchar_t after = line[i];
  if (IsBlank(after)) return false;
  if (IsBlank(before)) return true;
  const bool isWide = CluiWidthOf(before) == 2 || CluiWidthOf(after) == 2;
  return isWide && CluiWidthOf(after) > 0 && Closing.find(after) == Closing.npos &&
         Opening.find(before) == Opening.npos;
}

// The first character of the next row, or the length of the line when it needs none.
std::size_t EndOfRow(std::wstring_view line, std::size_t screen) {
  std::size_t column = 0;
  std::size_t breakable = 0;
  bool isIndented = true;  // only blanks so far; a break there would leave an empty row
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (!isIndented && MayBreakAt(line, i)) breakable = i;
    if (!IsBlank(line[i])) isIndented = false;
    column += WidthAt(line[i], column);
    if (column <= screen || IsBlank(line[i])) continue;
    if (breakable > 0) return breakable;
  }
  return line.size();
}

void AppendLine(std::wstring_view line, std::size_t screen, std::wstring& text) {
  for (std::size_t end; (end = EndOfRow(line, screen)) < line.size(); line.remove_prefix(end)) {
    std::size_t last = end;
    while (IsBlank(line[last - 1])) --last;
    text.append(line.substr(0, last)) += L'\n';
  }
  text += line;
}

}  // namespace

std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth) {
  std::wstring wrapped;
  std::wstring_view rest = text;
  for (std::size_t end; (end = rest.find(L'\n')) != rest.npos; rest.remove_prefix(end + 1)) {
    AppendLine(rest.substr(0, end), screenWidth, wrapped);
    wrapped += L'\n';
  }
  AppendLine(rest, screenWidth, wrapped);
  return wrapped;
}
