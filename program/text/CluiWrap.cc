#include "program/text/CluiWrap.h"

#include "terminal/YcluiWrap.h"

namespace {

void AppendLine(const std::wstring& line, std::size_t width, std::wstring& text) {
  const YcluiCells cells(std::u32string(line.begin(), line.end()));
  for (const YcluiWrappedRow& row : YcluiWrap::Rows(cells, width)) {
    if (row.begin > 0) text += L'\n';
    for (std::size_t i = row.begin; i < row.end; ++i) {
      const std::u32string shown = cells[i].character == '\t' ? U"\t" : cells[i].text;
      text.append(shown.begin(), shown.end());
    }
  }
}

}  // namespace

std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth) {
  std::wstring wrapped;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(L'\n', begin)) != text.npos; begin = end + 1) {
    AppendLine(text.substr(begin, end - begin), screenWidth, wrapped);
    wrapped += L'\n';
  }
  AppendLine(text.substr(begin), screenWidth, wrapped);
  return wrapped;
}
