#include "terminal/YcluiWrap.h"

#include <string_view>

namespace {

constexpr std::u32string_view Closing =
    U"\u3001\u3002\uFF0C\uFF0E\u300D\u300F\uFF09\u3011\u30FB\u30FC\uFF01\uFF1F,.;:!?)]\"'";
constexpr std::u32string_view Opening = U"\u300C\u300E\uFF08\u3010([\"'";

bool IsBlank(const YcluiCell& cell) {
  return cell.character == ' ' || cell.character == '\t';
}

bool MayBreakBetween(const YcluiCell& before, const YcluiCell& after) {
  if (IsBlank(after)) return false;
  if (IsBlank(before)) return true;
  const bool isWide = (before.width >= 2 && before.character >= 128) ||
                      (after.width >= 2 && after.character >= 128);
  return isWide && Closing.find(after.character) == Closing.npos &&
         Opening.find(before.character) == Opening.npos;
}

// The first unit of the next row, or the number of units when there is none.
std::size_t EndOfRow(const YcluiCells& line, std::size_t begin, std::size_t width) {
  std::size_t column = 0;
  std::size_t breakable = begin;
  bool isIndented = true;  // only blanks so far, where a break gains nothing
  for (std::size_t i = begin; i < line.size(); ++i) {
    if (!isIndented && MayBreakBetween(line[i - 1], line[i])) breakable = i;
    if (!IsBlank(line[i])) isIndented = false;
    column += line[i].character == '\t' ? YcluiWrap::TabStop - column % YcluiWrap::TabStop
                                        : line[i].width;
    if (column > width && !IsBlank(line[i]) && breakable > begin) return breakable;
  }
  return line.size();
}

}  // namespace

std::vector<YcluiWrappedRow> YcluiWrap::Rows(const YcluiCells& line, std::size_t width) {
  std::vector<YcluiWrappedRow> rows;
  std::size_t begin = 0;
  do {
    const std::size_t next = EndOfRow(line, begin, width);
    std::size_t end = next;
    while (next < line.size() && end > begin && IsBlank(line[end - 1])) --end;
    rows.push_back({begin, end});
    begin = next;
  } while (begin < line.size());
  return rows;
}
