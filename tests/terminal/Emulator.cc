#include "tests/terminal/Emulator.h"

#include <algorithm>
#include <utility>

#include "foundation/YCharacters.h"
#include "terminal/YcluiCells.h"

void Emulator::write(const std::string& output) {
  std::u32string characters;
  YCharacters::AppendFromUtf8(output, characters);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const char32_t c = characters[i];
    if (c != '\x1B') {
      put(c);
      continue;
    }
    std::string parameters;
    for (i += 2; characters[i] < '@'; ++i) parameters += static_cast<char>(characters[i]);
    escape(static_cast<char>(characters[i]), parameters);
  }
}

void Emulator::escape(char kind, const std::string& parameters) {
  const std::size_t count = parameters.empty() ? 1 : std::stoul(parameters);
  if (kind == 'm') {
    style_ = parameters.empty() ? "" : style_ + parameters + ";";
    return;
  }
  pending_ = false;
  column = std::min(column, width_ - 1);
  if (kind == 'A') row -= std::min(count, row - top_);
  if (kind == 'C') column = std::min(column + count, width_ - 1);
  if (kind == 'D') column -= std::min(count, column);
  if (kind == 'G') column = std::min(count - 1, width_ - 1);
  if (kind == 'H') {
    row = top_;
    column = 0;
    cutOffAbove();
  }
  if (kind == 'K' || kind == 'J') erase(rows_[row], column);
  for (std::size_t i = row + 1; kind == 'J' && i < rows_.size(); ++i) erase(rows_[i], 0);
}

// What has left the window cannot be erased any more; it does not go on with what comes after it.
void Emulator::cutOffAbove() {
  if (top_ > 0) rows_[top_ - 1].wrapped = false;
}

void Emulator::erase(Row& of, std::size_t from) {
  of.cells.resize(std::min(of.cells.size(), from));
  of.wrapped = false;
}

void Emulator::down() {
  if (row - top_ + 1 == height_) ++top_;
  if (++row == rows_.size()) rows_.emplace_back();
}

void Emulator::nextRow() {
  rows_[row].wrapped = true;
  down();
  column = 0;
  pending_ = false;
}

Emulator::Cell& Emulator::cell(std::size_t index) {
  std::vector<Cell>& cells = rows_[row].cells;
  if (cells.size() <= index) cells.resize(index + 1);
  return cells[index];
}

void Emulator::put(char32_t c) {
  if (c == '\r') column = 0, pending_ = false;
  if (c == '\n') down();
  if (c == '\b') column -= std::min<std::size_t>(column, 1);
  if (c < ' ') return;
  const std::size_t width = YcluiCells::WidthOf(c);
  if (width == 0) {
    std::size_t at = pending_ ? width_ - 1 : column - 1;
    while (cell(at).text.empty()) --at;
    cell(at).text += c;
    return;
  }
  if (pending_ || column + width > width_) {
    if (wraps_) nextRow();
    column = std::min(column, width_ - width);
  }
  if (cell(column).text.empty()) cell(column - 1) = {};
  if (column + width < rows_[row].cells.size() && cell(column + width).text.empty()) {
    cell(column + width) = {};
  }
  cell(column) = {std::u32string(1, c), style_};
  if (width == 2) cell(column + 1) = {U"", style_};
  column += width;
  if (column < width_) return;
  rows_[row].wrapped = false;
  pending_ = true;
  if (wraps_ && !wrapsLate_) nextRow();
}

std::size_t Emulator::resize(std::size_t width, std::size_t height, std::size_t slack,
                             std::size_t mark) {
  const std::vector<Row> before = std::exchange(rows_, {{}});
  const std::size_t cursorRow = row;
  const std::size_t cursorColumn = column;
  std::size_t marked = 0;
  const auto room = [&](std::size_t needed) {
    if (rows_.back().cells.size() + needed <= width) return;
    rows_.back().wrapped = true;
    rows_.emplace_back();
  };
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (i == mark) marked = rows_.size() - 1;
    const std::vector<Cell>& cells = before[i].cells;
    for (std::size_t k = 0; k < cells.size() || (i == cursorRow && k <= cursorColumn); ++k) {
      const bool isWide = k + 1 < cells.size() && cells[k + 1].text.empty();
      const bool isRight = k < cells.size() && cells[k].text.empty();
      const bool isMore = k < cells.size() || k < cursorColumn;
      if (!isRight) room(isWide && width > 1 ? 2 : 1);
      if (i == cursorRow && k == cursorColumn) {
        row = rows_.size() - 1;
        column = rows_.back().cells.size();
      }
      if (isMore && (!isRight || width > 1)) {
        rows_.back().cells.push_back(k < cells.size() ? cells[k] : Cell());
      }
    }
    if (!before[i].wrapped && i + 1 < before.size()) rows_.emplace_back();
  }
  width_ = width;
  height_ = height;
  pending_ = false;
  const std::size_t first = row + 1 > height ? row + 1 - height : 0;
  top_ = first + slack % (row - first + 1);
  if (marked < top_) cutOffAbove();
  if (rows_.size() > top_ + height) rows_.resize(top_ + height);
  return marked;
}

std::vector<Emulator::Cell> Emulator::cells(std::size_t index) const {
  std::vector<Cell> found = index < rows_.size() ? rows_[index].cells : std::vector<Cell>();
  while (!found.empty() && found.back() == Cell()) found.pop_back();
  return found;
}

std::string Emulator::text(std::size_t index) const {
  std::string text;
  for (const Cell& one : cells(index)) YCharacters::AppendUtf8(one.text, text);
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}
