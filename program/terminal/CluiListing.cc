#include "program/terminal/CluiListing.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "parser/YcluiParser.h"
#include "program/text/CluiMessages.h"
#include "program/text/CluiWidth.h"

namespace {

constexpr std::size_t Gap = 2;  // between columns

struct Cell {
  std::wstring word;
  std::size_t width;
};

// The last column needs no gap.
std::size_t ColumnsFor(std::size_t widest, std::size_t screen) {
  return std::max<std::size_t>(1, (screen + Gap - 1) / (widest + Gap));
}

std::size_t RowsFor(std::size_t cells, std::size_t widest, std::size_t screen) {
  const std::size_t fitting = ColumnsFor(widest, screen);
  return (cells + fitting - 1) / fitting;
}

std::vector<Cell> CellsOf(const std::vector<std::string>& words, CluiEncoding& encoding) {
  std::vector<Cell> cells;
  for (const std::string& name : words) {
    const std::wstring word = encoding.fromSystem(name);
    cells.push_back({word, static_cast<std::size_t>(CluiWidthOf(word))});
  }
  return cells;
}

// How many of the first cells fit into so many rows.
std::size_t CountFitting(const std::vector<Cell>& cells, std::size_t screen, std::size_t rows) {
  std::size_t above = 0;
  std::size_t inGrid = 0;
  std::size_t widest = 0;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t width = cells[i].width;
    if (width < screen) {
      widest = std::max(widest, width);
      ++inGrid;
    } else {
      above += RowsFor(inGrid, widest, screen) + (width + screen - 1) / screen;
      inGrid = widest = 0;
    }
    if (above + RowsFor(inGrid, widest, screen) > rows) return i;
  }
  return cells.size();
}

// REQUIRES: all cells are narrower than the screen.
void AppendGrid(const std::vector<Cell>& cells, std::size_t screen, std::wstring& text) {
  if (cells.empty()) return;
  std::size_t widest = 0;
  for (const Cell& cell : cells) widest = std::max(widest, cell.width);
  const std::size_t rows = RowsFor(cells.size(), widest, screen);
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t i = row; i < cells.size(); i += rows) {
      text += cells[i].word;
      if (i + rows < cells.size()) text.append(widest + Gap - cells[i].width, L' ');
    }
    text += L'\n';
  }
}

std::wstring TextOf(const std::vector<Cell>& cells, std::size_t screen) {
  std::wstring text;
  std::vector<Cell> grid;
  for (const Cell& cell : cells) {
    if (cell.width < screen) {
      grid.push_back(cell);
      continue;
    }
    AppendGrid(grid, screen, text);
    grid.clear();
    text.append(cell.word) += L'\n';
  }
  AppendGrid(grid, screen, text);
  return text;
}

std::string ShownType(YcluiValueType type) {
  const std::wstring text = CluiTypeText(type);
  return "(" + std::string(text.begin(), text.end()) + ")";
}

}  // namespace

CluiCandidates CluiCandidatesOf(const YcluiParser& parser, const char* beginning,
                                const CluiTextState& state, std::size_t atMost) {
  const YcluiValueType type = CluiEndOf(parser, beginning, state).type;
  if (type != YcluiValueNone) return {{ShownType(type)}, 1};
  std::vector<const char*> names;
  parser.eachPossibleWord(
      beginning,
      [](void* all, const char* name) {
        static_cast<std::vector<const char*>*>(all)->push_back(name);
      },
      &names);
  // Equal names are the same record of the dictionary, so comparing addresses is enough.
  std::sort(names.begin(), names.end(), std::less<>());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  const std::size_t first = std::min(atMost, names.size());
  std::partial_sort(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(first), names.end(),
                    [](const char* a, const char* b) { return std::strcmp(a, b) < 0; });
  return {{names.begin(), names.begin() + static_cast<std::ptrdiff_t>(first)}, names.size()};
}

std::wstring CluiColumns(const CluiCandidates& candidates, CluiEncoding& encoding, int screenWidth,
                         int rows) {
  const auto screen = static_cast<std::size_t>(std::max(screenWidth, 1));
  const auto room = static_cast<std::size_t>(std::max(rows, 1));
  std::vector<Cell> cells = CellsOf(candidates.words, encoding);
  const bool isWhole =
      cells.size() == candidates.count && CountFitting(cells, screen, room) == cells.size();
  if (isWhole) return TextOf(cells, screen);
  cells.resize(CountFitting(cells, screen, room - 1));
  return TextOf(cells, screen) + L"and " + std::to_wstring(candidates.count - cells.size()) +
         L" more; type a letter or two\n";
}

std::wstring CluiListing(const YcluiParser& parser, const char* beginning,
                         const CluiTextState& state, CluiEncoding& encoding, int screenWidth,
                         int rows) {
  const auto screen = static_cast<std::size_t>(std::max(screenWidth, 1));
  const auto room = static_cast<std::size_t>(std::max(rows, 1));
  return CluiColumns(CluiCandidatesOf(parser, beginning, state, room * ColumnsFor(1, screen)),
                     encoding, screenWidth, rows);
}
